#include "platform/ui/qt/widgets/ContentWidget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <utility>

#include "platform/ui/Window.h"
#include "platform/ui/qt/widgets/PictureIcon.h"

namespace vintrace::qt {

ContentWidget::ContentWidget(Window& window, QWidget& parent) : QWidget(&parent), window_(window) {
  if (window.Backdrop()) backdrop_ = IconOf(*window.Backdrop());
  if (window.Design().HasBackColor) {
    const Color color = window.Design().BackColor;
    QPalette colors = palette();
    colors.setColor(QPalette::Window, QColor(color.red, color.green, color.blue));
    setPalette(colors);
    setAutoFillBackground(true);
  }
}

void ContentWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  backdrop_.paint(&painter, rect(), Qt::AlignLeft | Qt::AlignTop);
  // The controls are painted after this widget, in the same turn of the event loop.
  if (auto painted = std::exchange(painted_, nullptr))
    QTimer::singleShot(0, this, std::move(painted));
}

void ContentWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) pressed_ = window_.RaiseMouseDown();
}

void ContentWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (std::exchange(pressed_, false)) window_.RaiseMouseUp();
}

}  // namespace vintrace::qt
