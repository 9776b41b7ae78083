// Linked into a program, this takes the place of the configured service host: the environment names
// one, and the root authority that vouches for it. Without that there is no service.

#include <QCoreApplication>
#include <QSslConfiguration>
#include <cstdlib>

#include "resources/Endpoints.h"

namespace vintrace::endpoints {

std::string_view ServiceHost() {
  const char* host = std::getenv("VINTRACE_TEST_SERVICE");
  return host == nullptr ? "" : host;
}

}  // namespace vintrace::endpoints

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
