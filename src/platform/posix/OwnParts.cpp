// A system that needs none.

#include "platform/OwnParts.h"

#include "platform/Exceptions.h"

namespace vintrace::ownParts {

String CommandFolder() { return {}; }

void* FunctionOf(const String& module, const String& /*name*/) {
  throw RuntimeException(module + " is missing");
}

}  // namespace vintrace::ownParts
