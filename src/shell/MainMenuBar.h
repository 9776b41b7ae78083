#pragma once

#include <memory>

#include "platform/ui/Menu.h"

namespace vintrace {

/// The menu bar of the application and of every inspection window.
class MainMenuBar : public MenuBar {
 public:
  /// The shared instance, made at the first call and kept for the life of the process.
  static const std::shared_ptr<MainMenuBar>& Instance();

  void Constructor();
  /// Adds the File menu.
  void Untitled0();
  /// Adds the Edit menu.
  void Untitled1();
};

/// The items of these names in the application's menu bar. Raise `NilObjectException` while the
/// application has no menu bar.
MenuItem& hiraku();
ApplicationMenuItem& kono();
MenuItem& upchk();

}  // namespace vintrace
