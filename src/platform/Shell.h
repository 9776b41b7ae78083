#pragma once

#include "platform/String.h"

namespace vintrace {

/// Runs command lines through the system's shell, /bin/sh, and waits for their end: that of the
/// command itself, not of what it started and left behind. The command reads nothing (its input is
/// /dev/null), what it prints is dropped, and its errors go where the program's go. Commands that
/// the program brings with it are found ahead of the search path.
class Shell {
 public:
  /// Runs `command`. Raises `IOException` when no shell can be started, and `RuntimeException` when
  /// the program's own commands aren't there.
  void Execute(const String& command);

  /// The exit status of the last command: 0 means success. One that a signal ended has that of a
  /// shell, 128 and the signal's number.
  int ErrorCode() const { return errorCode_; }

 private:
  int errorCode_ = 0;
};

}  // namespace vintrace
