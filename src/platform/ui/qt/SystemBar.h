#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/files/FolderItem.h"

class QWidget;

namespace vintrace::qt {

class MenuBarView;

/// The menu bar while no window carries one. Where menu bars belong to windows, a small stand-in
/// window shows it. That window also accepts dropped documents, like the application's icon on
/// other systems.
class SystemBar {
 public:
  virtual ~SystemBar() = default;

  /// Shows the stand-in window if `needed`, that is while no open window carries the bar, and hides
  /// it otherwise. `takesFocus`: whether it takes the focus when it comes up. `leftAside`: the
  /// items of which it says that they are no documents.
  virtual void SetNeeded(bool needed, bool takesFocus,
                         const std::vector<FolderItem>& leftAside) = 0;
  /// The stand-in window; nil while none is on the screen.
  virtual QWidget* StandIn() const = 0;
};

/// Makes the bar from `view`, which must outlive it. Calls `dropped` for each dropped document, and
/// `quit` when the user closes the stand-in window.
std::unique_ptr<SystemBar> MakeSystemBar(MenuBarView& view,
                                         std::function<void(const FolderItem&)> dropped,
                                         std::function<void()> quit);

}  // namespace vintrace::qt
