// Linked into a program, this has the leak checker forget what the toolkit's D-Bus thread keeps: at
// times its data outlives it, and nothing but addresses of the toolkit's stands in the report.

#include <QCoreApplication>
#include <QDBusConnection>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>

namespace {

void StartBusThread() {
  const __lsan::ScopedDisabler disabler;
  QDBusConnection::sessionBus();
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(StartBusThread)
#endif
