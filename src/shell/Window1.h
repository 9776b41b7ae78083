#pragma once

#include <optional>

#include "inspection/InspectionReport.h"
#include "platform/ui/Menu.h"
#include "platform/ui/Window.h"

namespace vintrace {

/// The window of one document, whose controls hold the report of its inspection.
class Window1 : public Window, public inspection::InspectionReport {
 public:
  std::optional<FolderItem> inddDoc;
  /// The path, in shell form, of the application that the user chose last in this window.
  String shp;

  void Layout() override;
  void CreateControls() override;
  virtual void _CreateControls0();

  virtual PushButton& PushButton2() const;
  virtual Label& StaticText1() const;
  virtual Label& StaticText2() const;
  virtual Label& StaticText3() const;
  virtual Label& StaticText5() const;
  virtual Label& Label1() const;
  virtual Canvas& Canvas1() const;
  virtual Label& StaticText4() const;
  virtual PushButton& PushButton3() const;

  virtual void PushButton2_Action();
  virtual void StaticText4_MouseExit();
  virtual void StaticText4_MouseEnter();
  virtual void StaticText4_MouseUp();
  virtual bool StaticText4_MouseDown();
  /// Opens the document in the known application of its release. If there is none, or that fails,
  /// asks the user for one. Closes the front window if the document opens; otherwise shows a
  /// message.
  virtual void PushButton3_Action();

  // The items of these names in the window's menu bar.
  virtual MenuItem& EditMenu() const;
  virtual ApplicationMenuItem& kono() const;
  virtual MenuItem& EditSeparator2() const;
  virtual MenuItem& upchk() const;
  virtual MenuItem& AllClose() const;
  virtual MenuItem& closewin() const;
  virtual MenuItem& EditAllCopy() const;
  virtual MenuItem& clcopy() const;
  virtual MenuItem& FileMenu() const;
  virtual QuitMenuItem& FileQuit() const;
  virtual MenuItem& hiraku() const;

  void AddMenuHandlers() override;
  void Event_EnableMenuItems() override;
  void Event_Open() override {}
  /// Handlers of the menu items; both return false. The first copies the report to the clipboard as
  /// one row, the second closes the window.
  virtual bool _clcopy_Action();
  virtual bool _closewin_Action();
  /// Calls `launch::OpenApp` with the document and the application at `path`, in shell form.
  virtual bool OpenApp(const String& path);
  /// Asks the user for the application of the document's release, and stores its location in `shp`,
  /// `App::apploc` and the settings file. False on cancel, which changes nothing. Raises like
  /// `launch::RewriteLocations`; `shp` and `apploc` have the location even then.
  virtual bool RegistApp();
  /// Calls `launch::DeleteApp` for the element `index` of `App::apploc`.
  virtual void DeleteApp(std::int64_t index);

  // The report, in the controls.
  void SetDocument(const FolderItem& document) override { inddDoc = document; }
  void SetDocumentName(const String& name) override;
  void SetProductText(const String& text) override { StaticText2().SetText(text); }
  void SetPicture(std::string_view name) override;
  void SetBuildText(const String& text) override { StaticText5().SetText(text); }
  String BuildText() const override { return StaticText5().Text(); }
  void SetEditionText(const String& text) override { StaticText3().SetText(text); }
  void SetOpenable(bool openable) override { PushButton3().SetVisible(openable); }
};

}  // namespace vintrace
