#include "platform/ui/qt/widgets/Centre.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace vintrace::qt {

void MoveToCentre(QWidget& window) {
  if (!window.testAttribute(Qt::WA_Resized)) window.adjustSize();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  window.move(screen.center() - window.rect().center());
}

}  // namespace vintrace::qt
