// A system that has the commands which we need.

#include "platform/posix/CommandFolder.h"

namespace vintrace::posix {

String CommandFolder() { return {}; }

}  // namespace vintrace::posix
