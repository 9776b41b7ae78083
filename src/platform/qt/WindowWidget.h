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

class ControlFace;

/// A window on the screen. It keeps its `Window` alive as long as it lives itself, that is until
/// the event loop comes round after the window was closed.
class WindowWidget : public QWidget {
 public:
  /// `activated` is called each time that the user or the window manager brings the window to the
  /// front.
  WindowWidget(std::shared_ptr<vintrace::Window> window, std::function<void()> activated);
  WindowWidget(const WindowWidget&) = delete;
  WindowWidget& operator=(const WindowWidget&) = delete;
  ~WindowWidget() override;

  vintrace::Window& Shown() const { return *window_; }

  /// `painted` is called once, when the window has been on the screen and drawn.
  void WhenPainted(std::function<void()> painted) { painted_ = std::move(painted); }

  /// Takes over the window's title.
  void RefreshTitle();
  /// Takes over what a control of this window says now.
  void Refresh(const RectControl& control);
  /// Leaves the screen, and is deleted when the event loop comes round.
  void Dismiss();

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void TakeDesign();
  void MakeControls();
  void SetTabOrder();
  void ComeToFront();

  std::shared_ptr<vintrace::Window> window_;
  std::function<void()> activated_;
  std::function<void()> painted_;
  std::unordered_map<const RectControl*, ControlFace*> faces_;
};

}  // namespace vintrace::qt
