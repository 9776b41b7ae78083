#pragma once

namespace vintrace::posix {

/// Raises `IOException` for `errorNumber` with the system's text. The one place that turns `errno`
/// into an exception.
[[noreturn]] void RaiseIOException(int errorNumber);

}  // namespace vintrace::posix
