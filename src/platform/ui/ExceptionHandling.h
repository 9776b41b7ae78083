#pragma once

#include <exception>
#include <functional>

namespace vintrace {

/// The exception helper of the program: runs `function`, and passes what it throws to
/// `_UnhandledException`, after which the program goes on.
void _CallFunctionWithExceptionHandling(const std::function<void()>& function);

/// The report of last resort: a message box with a general text and the reason.
void _UnhandledException(const std::exception& exception);

}  // namespace vintrace
