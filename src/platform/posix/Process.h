#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
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

/// What a new process shares with this one, besides its working directory.
enum class Ties {
  Kept,  ///< The session, standard error, and every other file that isn't closed on execution.
  Cut    ///< Nothing: it has a session of its own and, on Linux, no open file but the streams.
};

/// Starts a process and returns its id. Its streams are /dev/null, as far as it doesn't share them.
/// Raises `IOException` when the program can't be executed, as a script can't that has no line with
/// its interpreter. No signal is ignored or blocked in it. Its
/// end is to be awaited, unless this process ends before.
pid_t StartProcess(const Command& command, Ties ties);

/// Waits for the end of a process that this one has started, and returns its exit status: of one
/// that a signal ended that of a shell, 128 and the signal's number. Raises `IOException` when it
/// can't be awaited.
int AwaitEnd(pid_t process);
/// The same until `patience` has passed; then nil, and the process runs on.
std::optional<int> AwaitEnd(pid_t process, std::chrono::milliseconds patience);

}  // namespace vintrace::posix
