#pragma once

#include "platform/String.h"

/// The parts that the program brings with it beside its own file: commands that the system has none
/// of, and modules. On a system that needs none there are none.
namespace vintrace::ownParts {

/// The folder of the commands: absolute, without links. It lies beside the program, in the build
/// tree as when installed. Empty on a system that needs none. Raises `RuntimeException` when it
/// isn't there.
String CommandFolder();

/// Loads a module of that file name for good, and returns the address of a function of it. Raises
/// `RuntimeException` when there is no such module or function.
void* FunctionOf(const String& module, const String& name);

}  // namespace vintrace::ownParts
