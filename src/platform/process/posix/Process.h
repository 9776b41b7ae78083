#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/text/String.h"

namespace vintrace::posix {

/// The environment of a process to be started; at first a copy of this process's.
class ProcessEnvironment {
 public:
  ProcessEnvironment();

  /// The value of the variable `name`; empty if it isn't set.
  String Value(std::string_view name) const;
  /// Sets or replaces the variable `name`. Neither text may hold a zero byte.
  void Set(std::string_view name, std::string_view value);

  /// The variables, each as "NAME=value".
  const std::vector<String>& Variables() const { return variables_; }

 private:
  std::vector<String> variables_;
};

/// A program with its arguments and environment.
struct Command {
  String program;  ///< A path, or a name without a slash to be found on this process's PATH.
  std::vector<String> arguments;  ///< The first is the program's own name.
  ProcessEnvironment environment;
};

/// What a new process inherits besides its working directory.
enum class Session {
  Shared,  ///< The session, standard error, and all files without close-on-exec.
  New      ///< Nothing: it has a new session and, on Linux, no other open file.
};

/// Starts a process and returns its id. Streams that it does not inherit are /dev/null, and no
/// signal is ignored or blocked in it. Raises `IOException` if the program can't be executed. The
/// caller passes the id to `AwaitEnd`, or leaves a zombie until this process ends.
pid_t StartProcess(const Command& command, Session session);

/// Waits for a child process to end and returns its exit status; after a signal, 128 plus the
/// signal's number. Raises `IOException` if it can't be awaited.
int AwaitEnd(pid_t process);
/// The same for at most `patience`; nil if the process still runs then.
std::optional<int> AwaitEnd(pid_t process, std::chrono::milliseconds patience);

}  // namespace vintrace::posix
