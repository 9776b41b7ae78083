#pragma once

#include "platform/String.h"

namespace vintrace::posix {

/// The folder of the commands that the program brings with it because the system has none of their
/// kind: absolute, without links. It lies beside the program, in the build tree as when installed.
/// Empty where there is none.
String CommandFolder();

}  // namespace vintrace::posix
