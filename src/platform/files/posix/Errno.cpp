#include "platform/files/posix/Errno.h"

#include <system_error>

#include "platform/text/Exceptions.h"

namespace vintrace::posix {

void RaiseIOException(int errorNumber, const String& path) {
  throw IOException(errorNumber, path + ": " + std::generic_category().message(errorNumber));
}

}  // namespace vintrace::posix
