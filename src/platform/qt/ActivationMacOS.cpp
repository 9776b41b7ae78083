#include <QWidget>

#include "platform/qt/Activation.h"

namespace vintrace::qt {

void BringToFront(QWidget& window, const Activation& /*activation*/) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.raise();
  window.activateWindow();
}

void EndStartup(const Activation& /*activation*/) {}

std::optional<KeyPress> KeyPressIn(const QByteArray& /*type*/, const void* /*message*/) {
  return std::nullopt;
}

}  // namespace vintrace::qt
