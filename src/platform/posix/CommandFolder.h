#pragma once

#include "platform/String.h"

namespace vintrace::posix {

/// The folder of the commands that the program brings with it because the system has none of their
/// kind: absolute, without links. It lies beside the program, in the build tree as when installed.
/// Empty on a system that needs none. Raises `RuntimeException` when they aren't there, or a search
/// path can't name their folder, as it has a colon in its own path.
String CommandFolder();

}  // namespace vintrace::posix
