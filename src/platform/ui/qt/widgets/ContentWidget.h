#pragma once

#include <QIcon>
#include <QWidget>
#include <functional>

namespace vintrace {
class Window;
}

namespace vintrace::qt {

/// The content of a window, inside its frame and below its menu bar. It is the parent of the
/// controls' widgets. Mouse events that no control takes become the window's own.
class ContentWidget : public QWidget {
 public:
  /// `window` must outlive this object, which `parent` owns.
  ContentWidget(Window& window, QWidget& parent);

  /// Calls `painted` once, after the content has next been painted.
  void WhenPainted(std::function<void()> painted) { painted_ = std::move(painted); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Window& window_;
  QIcon backdrop_;
  std::function<void()> painted_;
  bool pressed_ = false;  // The window took the press and gets the release.
};

}  // namespace vintrace::qt
