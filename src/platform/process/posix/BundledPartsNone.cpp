// A system that needs no bundled parts.

#include "platform/process/BundledParts.h"

#include "platform/text/Exceptions.h"

namespace vintrace::bundledParts {

String Folder() { return {}; }

void* FunctionOf(const String& module, const String& /*name*/) {
  throw RuntimeException(module + " is missing");
}

}  // namespace vintrace::bundledParts
