#include "platform/posix/Errno.h"

#include <system_error>

#include "platform/Exceptions.h"

namespace vintrace::posix {

void RaiseIOException(int errorNumber) {
  throw IOException(errorNumber, std::generic_category().message(errorNumber));
}

}  // namespace vintrace::posix
