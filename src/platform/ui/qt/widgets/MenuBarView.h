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

/// True if each window carries a menu bar; false on macOS, where the system has the only one.
#ifdef __APPLE__
inline constexpr bool WindowsCarryTheBar = false;
#else
inline constexpr bool WindowsCarryTheBar = true;
#endif

/// The application's menu bar on the screen. All windows that carry it share its menus and their
/// shortcuts.
class MenuBarView : public QObject {
 public:
  /// `menuBar` outlives the object.
  explicit MenuBarView(const MenuBar& menuBar);
  MenuBarView(const MenuBarView&) = delete;
  MenuBarView& operator=(const MenuBarView&) = delete;
  ~MenuBarView() override;

  /// A bar with all menus, a child of `window`, which owns it; with nil, the system's own bar,
  /// which the caller owns.
  QMenuBar* MakeBar(QWidget* window);
  /// Has the shortcuts work in a window that carries no bar.
  void AddShortcuts(QWidget& window) const;

  /// Brings the items up to date, and the screen with them.
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
