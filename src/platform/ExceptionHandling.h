#pragma once

#include <exception>
#include <functional>

namespace vintrace {

/// Runs `function`, as everything runs that the desktop calls back: what it throws goes to
/// `_UnhandledException`, and the program goes on.
void _CallFunctionWithExceptionHandling(const std::function<void()>& function);

/// The last-resort report: tells the user in a message box that something broke, and the reason.
void _UnhandledException(const std::exception& exception);

}  // namespace vintrace
