#include "platform/Shell.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/posix/Errno.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not in every system's header

namespace vintrace {
namespace {

void Require(int error) {
  if (error != 0) posix::RaiseIOException(error);
}

/// What becomes of the standard streams of a new process.
class Streams {
 public:
  Streams() {
    Require(posix_spawn_file_actions_init(&actions_));
    Open(STDIN_FILENO, O_RDONLY);
    Open(STDOUT_FILENO, O_WRONLY);
  }
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;
  ~Streams() { posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* Actions() const { return &actions_; }

 private:
  void Open(int stream, int flags) {
    Require(posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", flags, 0));
  }

  posix_spawn_file_actions_t actions_{};
};

/// What this program ignores is not ignored by what it starts.
class Signals {
 public:
  Signals() {
    sigset_t back{};
    sigemptyset(&back);
    sigaddset(&back, SIGPIPE);
    Require(posix_spawnattr_init(&attributes_));
    posix_spawnattr_setsigdefault(&attributes_, &back);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
  }
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;
  ~Signals() { posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

int ExitStatusOf(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) posix::RaiseIOException(errno);
  }
  constexpr int ShellsMarkOfASignal = 128;
  return WIFEXITED(status) ? WEXITSTATUS(status) : ShellsMarkOfASignal + WTERMSIG(status);
}

}  // namespace

void Shell::Execute(const String& command) {
  String name = "sh";
  String option = "-c";
  String line = command;
  char* const arguments[] = {name.data(), option.data(), line.data(), nullptr};
  const Streams streams;
  const Signals signals;
  pid_t process = 0;
  Require(posix_spawn(&process, "/bin/sh", streams.Actions(), signals.Attributes(), arguments,
                      environ));
  errorCode_ = ExitStatusOf(process);
}

}  // namespace vintrace
