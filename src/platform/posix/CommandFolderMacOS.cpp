// macOS has the commands that we need.

#include "platform/posix/CommandFolder.h"

namespace vintrace::posix {

String CommandFolder() { return {}; }

}  // namespace vintrace::posix
