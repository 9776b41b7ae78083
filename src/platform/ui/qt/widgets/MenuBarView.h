#pragma once

#include <QAction>
#include <QObject>
#include <vector>

class QMenu;
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

/// The application's menu bar on the screen. Each window that carries it has menus of its own, with
/// the same actions.
class MenuBarView : public QObject {
 public:
  /// `menuBar` must outlive this object.
  explicit MenuBarView(const MenuBar& menuBar);

  /// A bar with all menus, owned by its parent `window`, where F10 opens the first menu. If that is
  /// null, the system's own bar, owned by the caller.
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

  void MakeAction(const MenuItem& item);
  void AddMenu(const MenuItem& menu, QMenuBar& bar);
  QAction* ActionOf(const MenuItem& item) const;
  void Choose(const MenuItem& item);

  const MenuBar& menuBar_;
  std::vector<View> views_;
};

}  // namespace vintrace::qt
