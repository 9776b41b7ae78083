// Linked into a program, this takes the place of the configured service host: the environment names
// one. Without that there is no service.

#include <cstdlib>

#include "resources/Endpoints.h"

namespace vintrace::endpoints {

std::string_view ServiceHost() {
  const char* host = std::getenv("VINTRACE_TEST_SERVICE");
  return host == nullptr ? "" : host;
}

}  // namespace vintrace::endpoints
