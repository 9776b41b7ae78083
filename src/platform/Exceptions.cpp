#include "platform/Exceptions.h"

namespace vintrace {

IOException::IOException(int errorNumber, const String& reason)
    : RuntimeException(reason), errorNumber_(errorNumber) {}

NilObjectException::NilObjectException(const String& what)
    : RuntimeException("nil object: " + what) {}

}  // namespace vintrace
