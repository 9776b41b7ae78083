#pragma once

#include <optional>
#include <vector>

#include "platform/ui/Application.h"

namespace vintrace {

/// The application's version for the online services: the three numbers joined without a separator.
String ApplicationVersionText(int major, int minor, int bug);

/// The application object: where a document enters the program, and where its commands arrive.
class App : public Application {
 public:
  /// The registered application object. Raises `NilObjectException` before start-up has made it.
  static App& Instance();

  /// The known application locations, as the lines of the settings file.
  std::vector<String> apploc;
  /// The settings file; nil until it is known.
  std::optional<FolderItem> myf;

  void Event_EnableMenuItems() override;
  /// With a nil item the user is asked for a document.
  void Event_OpenDocument(const std::optional<FolderItem>& item) override;
  void Event_Open() override;

  /// Handlers of the menu items, which all return false. `_hiraku_Action` asks for a document,
  /// `_upchk_Action` the service for a newer release, and tells what comes of it.
  virtual bool _hiraku_Action();
  virtual bool _kono_Action();
  virtual bool _upchk_Action();
  virtual bool _EditAllCopy_Action();
  virtual bool _AllClose_Action();

  // The online services: the program's identifier, its version text, and which exchange it is.
  /// What the service says of newer releases: "true" or "false", or anything when it couldn't be
  /// asked.
  virtual String UpdateCheck(const String& app_id, const String& ver, const String& regi);
  /// Tells the service of this start. Whatever comes of it, nobody is told.
  virtual void kcheck(const String& app_id, const String& ver, const String& regi);
  /// Loads `apploc` from the settings file `myf`, which is made if there is none. Raises
  /// `NilObjectException` when there is no folder for it, and `IOException`.
  virtual void AppLocation();
  /// Shows the notice if there is a newer release, and otherwise says nothing.
  virtual void Openupchk();

  /// Opens a window that tells what `item` is. A file whose name is no document's opens none. Never
  /// raises a `RuntimeException`: on any such failure a message says so, and the program ends.
  virtual void VersionCheck(const FolderItem& item);

  virtual void Constructor() {}
};

}  // namespace vintrace
