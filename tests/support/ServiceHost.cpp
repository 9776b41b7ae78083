// Linked into a program, this replaces the configured service host by VINTRACE_TEST_SERVICE. If
// that is unset, there is no service.

#include <cstdlib>

#include "resources/Endpoints.h"

namespace vintrace::endpoints {

std::string_view ServiceHost() {
  const char* host = std::getenv("VINTRACE_TEST_SERVICE");
  return host == nullptr ? "" : host;
}

}  // namespace vintrace::endpoints
