#include <QWidget>

#include "platform/ui/qt/Activation.h"

namespace vintrace::qt {

void BringToFront(QWidget& window, const Activation& /*activation*/) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.raise();
  window.activateWindow();
}

void EndStartup(const Activation& /*activation*/) {}

}  // namespace vintrace::qt
