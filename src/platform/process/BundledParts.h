#pragma once

#include "platform/text/String.h"

/// The parts that are installed beside the program: a command that the system lacks, and modules.
/// macOS needs none.
namespace vintrace::bundledParts {

/// The absolute path of their folder, without links, in the build tree as after installation. Empty
/// on a system that needs none. Raises `RuntimeException` if it doesn't exist.
String Folder();

/// Loads the module with that file name for the rest of the process, and returns the address of its
/// function `name`. Raises `RuntimeException` if there is no such module or function.
void* FunctionOf(const String& module, const String& name);

}  // namespace vintrace::bundledParts
