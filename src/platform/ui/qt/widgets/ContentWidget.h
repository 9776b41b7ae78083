#pragma once

#include <QIcon>
#include <QWidget>
#include <functional>

namespace vintrace {
class Window;
}

namespace vintrace::qt {

/// What a window has inside its frame and below its bar: the ground, on which the controls lie.
/// What no control takes of the mouse becomes the window's own events.
class ContentWidget : public QWidget {
 public:
  /// `window` is used until the object goes. `parent` owns it.
  ContentWidget(Window& window, QWidget& parent);

  /// `painted` is called once, when the content has been on the screen and drawn.
  void WhenPainted(std::function<void()> painted) { painted_ = std::move(painted); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Window& window_;
  QIcon backdrop_;
  std::function<void()> painted_;
  bool pressed_ = false;  // The window took the press, and the release is its own.
};

}  // namespace vintrace::qt
