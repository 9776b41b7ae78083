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

/// The widget of a `Window`, which it keeps alive. It is deleted in the event loop after the window
/// has been closed.
class WindowWidget : public QWidget {
 public:
  /// `menus` is shown as a bar if the window has a menu bar; otherwise only its shortcuts work in
  /// the window. It may be null, and must outlive this object. `activated` is called each time the
  /// user or the window manager brings the window to the front.
  WindowWidget(std::shared_ptr<vintrace::Window> window, MenuBarView* menus,
               std::function<void()> activated);
  WindowWidget(const WindowWidget&) = delete;
  WindowWidget& operator=(const WindowWidget&) = delete;
  ~WindowWidget() override;

  vintrace::Window& Shown() const { return *window_; }

  ContentWidget& Content() const { return *content_; }

  /// Shows the window at the `Placement` of its design.
  void ComeUp();
  /// Sets whether a floating window stays above others. Has no effect on other windows.
  void AllowStayingOnTop(bool allowed);
  /// Updates the title on the screen.
  void RefreshTitle();
  /// Updates the view of a control of this window.
  void Refresh(const RectControl& control);
  /// Hides the window, and deletes this object in the event loop.
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
  /// True if `key` is Return and the window has a default button, which is pressed if enabled.
  bool PressesDefault(const QKeyEvent& key);

  std::shared_ptr<vintrace::Window> window_;
  std::function<void()> activated_;
  ContentWidget* content_;
  std::unordered_map<const RectControl*, ControlView*> views_;
};

}  // namespace vintrace::qt
