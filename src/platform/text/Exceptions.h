#pragma once

#include <functional>
#include <stdexcept>

#include "platform/text/String.h"

namespace vintrace {

/// An unexpected failure. Expected outcomes are results and never exceptions.
class RuntimeException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file or stream operation failed.
class IOException : public RuntimeException {
 public:
  /// `errorNumber`: the system's `errno`. `reason`: the path of the file, as raw bytes, and the
  /// system's text for the error.
  IOException(int errorNumber, const String& reason)
      : RuntimeException(reason), errorNumber_(errorNumber) {}

  /// The system's `errno`.
  int ErrorNumber() const { return errorNumber_; }

 private:
  int errorNumber_;
};

/// An operation was called on an absent object.
class NilObjectException : public RuntimeException {
 public:
  /// `what`: the name of the absent object.
  explicit NilObjectException(const String& what) : RuntimeException("nil object: " + what) {}
};

/// Calls a function and handles its exceptions.
using ExceptionHelper = void (*)(const std::function<void()>& function);

/// Sets the helper for the rest of the process.
void _RuntimeSetExceptionHelper(ExceptionHelper helper);

/// Calls `function`, a callback of the desktop or the network, through the helper, or directly if
/// no helper has been set.
void _RuntimeCall(const std::function<void()>& function);

}  // namespace vintrace
