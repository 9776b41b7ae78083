#pragma once

#include "platform/text/String.h"

namespace vintrace::posix {

/// Raises `IOException` for `errorNumber`, an `errno`, with `path` and the system's text. The one
/// place that turns `errno` into an exception.
[[noreturn]] void RaiseIOException(int errorNumber, const String& path);

}  // namespace vintrace::posix
