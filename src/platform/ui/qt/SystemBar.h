#pragma once

#include <functional>
#include <memory>

#include "platform/files/FolderItem.h"

class QWidget;

namespace vintrace::qt {

class MenuBarView;

/// The bar that is there also without a window. Where windows carry the bar, a small window stands
/// in for it, which also takes the documents that are dropped on it, as the application's icon does
/// elsewhere.
class SystemBar {
 public:
  virtual ~SystemBar() = default;

  /// Tells whether no window that carries the bar is open. The window that stands in comes and goes
  /// with it.
  virtual void SetNeeded(bool needed) = 0;
  /// The window that stands in; nil while there is none on the screen.
  virtual QWidget* StandIn() const = 0;
};

/// Makes the bar, of `view`, which outlives it. `dropped` is called for each document, `quit` when
/// the user closes the window that stands in.
std::unique_ptr<SystemBar> MakeSystemBar(MenuBarView& view,
                                         std::function<void(const FolderItem&)> dropped,
                                         std::function<void()> quit);

}  // namespace vintrace::qt
