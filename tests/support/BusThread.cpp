// Linked into a program, this excludes the data of Qt's D-Bus thread from leak checks: some of it
// outlives the thread at times, and the reported stacks have no symbols for a suppression.

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
