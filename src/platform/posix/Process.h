#pragma once

#include <sys/types.h>

#include <string_view>
#include <vector>

#include "platform/String.h"

namespace vintrace::posix {

/// The environment of a process that is to be started: at first that of this one.
class ProcessEnvironment {
 public:
  ProcessEnvironment();

  /// The value of the variable `name`; empty when it isn't set.
  String Value(std::string_view name) const;
  /// Sets the variable `name`, which may be set already. Neither holds a zero byte.
  void Set(std::string_view name, std::string_view value);

  /// The variables, each as "NAME=value".
  const std::vector<String>& Variables() const { return variables_; }

 private:
  std::vector<String> variables_;
};

/// A program and what it is started with.
struct Command {
  String program;                 ///< Its path, or without a slash a name on this process's PATH.
  std::vector<String> arguments;  ///< Each arrives as it is; the first is the program's own name.
  ProcessEnvironment environment;
};

/// What a new process shares with this one.
enum class Ties {
  Kept,  ///< The session and standard error. Its input and output are /dev/null.
  Cut    ///< Nothing: a session of its own, all three streams on /dev/null, no other open file.
};

/// Starts a process and returns its id. Raises `IOException` when the program can't be executed; a
/// script without a line that names its interpreter can't. What this program ignores isn't ignored
/// by the new one. Its end is to be awaited by the caller, or else by the system behind this
/// process's own.
pid_t StartProcess(const Command& command, Ties ties);

/// The exit status from what `waitpid` told of an ended process. One that a signal ended has that
/// of a shell, 128 and the signal's number.
int ExitStatusOf(int waitStatus);

}  // namespace vintrace::posix
