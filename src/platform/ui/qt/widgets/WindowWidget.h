#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <unordered_map>

namespace vintrace {
class RectControl;
class Window;
}  // namespace vintrace

namespace vintrace::qt {

class ContentWidget;
class ControlView;
class MenuBarView;

/// A window on the screen. It keeps its `Window` alive as long as it lives itself, that is until
/// the event loop comes round after the window was closed.
class WindowWidget : public QWidget {
 public:
  /// `menus` are what the window carries as a bar if it has one of its own, and otherwise what its
  /// shortcuts reach; nil for none. They outlive it. `activated` is called each time that the user
  /// or the window manager brings the window to the front.
  WindowWidget(std::shared_ptr<vintrace::Window> window, MenuBarView* menus,
               std::function<void()> activated);
  WindowWidget(const WindowWidget&) = delete;
  WindowWidget& operator=(const WindowWidget&) = delete;
  ~WindowWidget() override;

  vintrace::Window& Shown() const { return *window_; }

  /// What is inside the frame and below the bar.
  ContentWidget& Content() const { return *content_; }

  /// Comes onto the screen where its design has it.
  void ComeUp();
  /// Keeps a floating window above others, or no longer.
  void AllowStayingOnTop(bool allowed);
  /// Takes over the window's title.
  void RefreshTitle();
  /// Takes over what a control of this window says now.
  void Refresh(const RectControl& control);
  /// Leaves the screen, and is deleted when the event loop comes round.
  void Dismiss();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void TakeDesign();
  void TakeSize();
  void TakeMenus(MenuBarView& menus);
  void MakeControls();
  void SetTabOrder();
  void FindCovered();
  void IsInFront();
  /// True when that is Return, and the window has a button for it.
  bool PressesDefault(const QKeyEvent& key);

  std::shared_ptr<vintrace::Window> window_;
  std::function<void()> activated_;
  ContentWidget* content_;
  std::unordered_map<const RectControl*, ControlView*> views_;
};

}  // namespace vintrace::qt
