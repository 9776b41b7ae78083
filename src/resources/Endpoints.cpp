#include "resources/Endpoints.h"

namespace vintrace::endpoints {

std::string_view ServiceHost() { return VINTRACE_SERVICE_HOST; }

}  // namespace vintrace::endpoints
