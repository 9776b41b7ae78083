#pragma once

#include <stdexcept>

#include "platform/String.h"

namespace vintrace {

/// Something broke. Expected outcomes are results and never this.
class RuntimeException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file or stream operation failed.
class IOException : public RuntimeException {
 public:
  /// `errorNumber`: the system's own number (errno); `reason`: its text, behind the file's path
  /// where the user can't know that.
  IOException(int errorNumber, const String& reason);

  /// The system's number of the error.
  int ErrorNumber() const { return errorNumber_; }

 private:
  int errorNumber_;
};

/// An operation was made on an object that is absent.
class NilObjectException : public RuntimeException {
 public:
  /// `what`: what was absent.
  explicit NilObjectException(const String& what);
};

}  // namespace vintrace
