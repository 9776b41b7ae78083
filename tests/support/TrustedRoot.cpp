// Linked into a program, this makes it trust the root certificate in the file VINTRACE_TEST_ROOT.

#include <QCoreApplication>
#include <QSslConfiguration>

namespace {

void TrustRoot() {
  const QString root = qEnvironmentVariable("VINTRACE_TEST_ROOT");
  if (root.isEmpty()) return;
  auto configuration = QSslConfiguration::defaultConfiguration();
  configuration.addCaCertificates(root);
  QSslConfiguration::setDefaultConfiguration(configuration);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(TrustRoot)
