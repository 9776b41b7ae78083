#pragma once

#include <optional>
#include <vector>

#include "platform/ui/Application.h"

namespace vintrace {

/// The application's version for the online services: the three numbers joined without a separator.
String ApplicationVersionText(int major, int minor, int bug);

/// The application object, which handles documents to open and the application's commands.
class App : public Application {
 public:
  /// The registered application object. Raises `NilObjectException` before start-up has created it.
  static App& Instance();

  /// The known application locations, as the lines of the settings file.
  std::vector<String> apploc;
  /// The settings file; nil before `AppLocation`.
  std::optional<FolderItem> myf;

  void Event_EnableMenuItems() override;
  /// Asks the user for a document if `item` is nil.
  void Event_OpenDocument(const std::optional<FolderItem>& item) override;
  /// Loads the settings, looks for a newer release and reports the start; returns after both
  /// exchanges.
  void Event_Open() override;

  /// Handlers of the menu items; all return false. `_hiraku_Action` asks for a document to open;
  /// `_upchk_Action` checks for a newer release and shows the result.
  virtual bool _hiraku_Action();
  virtual bool _kono_Action();
  virtual bool _upchk_Action();
  virtual bool _EditAllCopy_Action();
  virtual bool _AllClose_Action();

  // The online services. `app_id` names the program, `ver` its version, `regi` the kind of request.
  /// The update service's reply: "true" if there is a newer release, "false" if not, and any other
  /// text after a failure.
  virtual String UpdateCheck(const String& app_id, const String& ver, const String& regi);
  /// Reports this start to the service. The reply and all failures are ignored.
  virtual void kcheck(const String& app_id, const String& ver, const String& regi);
  /// Sets `myf` and loads `apploc` from it. Creates the file if it is missing. Raises
  /// `NilObjectException` if there is no folder for it, and like `launch::LoadLocations`.
  virtual void AppLocation();
  /// Shows the update notice if there is a newer release.
  virtual void Openupchk();

  /// Opens a window with the inspection of `item`; ignores files that are not named .indd. On any
  /// exception, shows a message and quits the program instead of raising it.
  virtual void VersionCheck(const FolderItem& item);

  virtual void Constructor() {}
};

}  // namespace vintrace
