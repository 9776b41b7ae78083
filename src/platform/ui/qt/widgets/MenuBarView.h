#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <memory>
#include <vector>

class QMenuBar;

namespace vintrace {
class MenuBar;
class MenuItem;
}  // namespace vintrace

namespace vintrace::qt {

/// True if windows carry menu bars; false on macOS, where the application has a single one.
#ifdef __APPLE__
inline constexpr bool WindowsCarryTheBar = false;
#else
inline constexpr bool WindowsCarryTheBar = true;
#endif

/// The application's menu bar on the screen. All windows that carry it share its menus and
/// shortcuts.
class MenuBarView : public QObject {
 public:
  /// `menuBar` must outlive this object.
  explicit MenuBarView(const MenuBar& menuBar);
  MenuBarView(const MenuBarView&) = delete;
  MenuBarView& operator=(const MenuBarView&) = delete;
  ~MenuBarView() override;

  /// A bar with all menus, owned by its parent `window`. If that is null, the system's own bar,
  /// owned by the caller.
  QMenuBar* MakeBar(QWidget* window);
  /// Makes the shortcuts work in a window that carries no bar.
  void AddShortcuts(QWidget& window) const;

  /// Updates the menu items and their state on the screen.
  void Refresh();

 private:
  struct View {
    const MenuItem* item;
    QAction* action;
  };

  std::unique_ptr<QMenu> MenuOf(const MenuItem& menu);
  QAction* ActionOf(const MenuItem& item, QMenu& menu);
  void Choose(const MenuItem& item);

  std::vector<std::unique_ptr<QMenu>> menus_;
  std::vector<View> views_;
};

}  // namespace vintrace::qt
