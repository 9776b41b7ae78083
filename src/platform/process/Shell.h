#pragma once

#include "platform/text/String.h"

namespace vintrace {

/// Runs command lines through the system's shell, /bin/sh. The command's input and output are
/// /dev/null, and its errors go to the program's standard error. The program's bundled commands are
/// found before those of the search path.
class Shell {
 public:
  /// 0, the only mode: `Execute` returns when the command has ended, though processes that it left
  /// behind may go on.
  int Mode = 0;

  /// Runs `command`. Raises `IOException` if no shell can be started, and `RuntimeException` if the
  /// bundled commands are missing.
  void Execute(const String& command);

  /// The exit status of the last command; 0 means success. After a signal it is 128 plus the
  /// signal's number, as in a shell.
  int ErrorCode() const { return errorCode_; }

 private:
  int errorCode_ = 0;
};

}  // namespace vintrace
