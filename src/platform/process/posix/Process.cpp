#include "platform/process/posix/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <thread>

#include "platform/files/posix/Errno.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not in every system's header

namespace vintrace::posix {
namespace {

/// Raises `IOException` for `program` if `error`, an `errno`, isn't 0.
void Require(int error, const String& program) {
  if (error != 0) RaiseIOException(error, program);
}

/// The open files of a new process.
class Files {
 public:
  Files(const Command& command, Session session) : program_(command.program) {
    Require(posix_spawn_file_actions_init(&actions_), program_);
    Open(STDIN_FILENO, O_RDONLY);
    Open(STDOUT_FILENO, O_WRONLY);
    if (session == Session::New) {
      Open(STDERR_FILENO, O_WRONLY);
      CloseOthers();
    }
  }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  ~Files() { posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* Actions() const { return &actions_; }

 private:
  void Open(int stream, int flags) {
    Require(posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", flags, 0), program_);
  }

  void CloseOthers() {
#ifdef __linux__
    Require(posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1), program_);
#endif
  }

  const String& program_;
  posix_spawn_file_actions_t actions_{};
};

/// The session and the signals of a new process.
class Attributes {
 public:
  Attributes(const Command& command, Session session) {
    sigset_t none{};
    sigset_t all{};
    sigemptyset(&none);
    sigfillset(&all);
    Require(posix_spawnattr_init(&attributes_), command.program);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    const int newSession = session == Session::New ? POSIX_SPAWN_SETSID : 0;
    const int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | newSession;
    posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* Get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

/// Pointers to the texts, with a null pointer at the end, as `posix_spawn` takes them.
std::vector<char*> Pointers(std::vector<String>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (String& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// The exit status of a process; nil if it still runs, and `options` have WNOHANG.
std::optional<int> Look(pid_t process, int options) {
  constexpr int ExitStatusOfSignals = 128;
  int status = 0;
  pid_t found = waitpid(process, &status, options);
  while (found < 0 && errno == EINTR) found = waitpid(process, &status, options);
  if (found < 0) RaiseIOException(errno, "Process " + Str(process));
  if (found == 0) return std::nullopt;
  return WIFEXITED(status) ? WEXITSTATUS(status) : ExitStatusOfSignals + WTERMSIG(status);
}

String Beginning(std::string_view name) { return String(name) + '='; }

}  // namespace

ProcessEnvironment::ProcessEnvironment() {
  for (char** variable = environ; *variable != nullptr; ++variable) {
    variables_.emplace_back(*variable);
  }
}

String ProcessEnvironment::Value(std::string_view name) const {
  const String beginning = Beginning(name);
  for (const String& variable : variables_) {
    if (variable.starts_with(beginning)) return variable.substr(beginning.size());
  }
  return {};
}

void ProcessEnvironment::Set(std::string_view name, std::string_view value) {
  const String beginning = Beginning(name);
  std::erase_if(variables_, [&](const String& each) { return each.starts_with(beginning); });
  variables_.push_back(beginning + String(value));
}

pid_t StartProcess(const Command& command, Session session) {
  auto arguments = command.arguments;
  auto variables = command.environment.Variables();
  const Files files(command, session);
  const Attributes attributes(command, session);
  pid_t process = 0;
  Require(posix_spawnp(&process, command.program.c_str(), files.Actions(), attributes.Get(),
                       Pointers(arguments).data(), Pointers(variables).data()),
          command.program);
  return process;
}

int AwaitEnd(pid_t process) { return Look(process, 0).value(); }

std::optional<int> AwaitEnd(pid_t process, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds BetweenLooks(10);
  const auto end = std::chrono::steady_clock::now() + patience;
  while (true) {
    const auto status = Look(process, WNOHANG);
    if (status || std::chrono::steady_clock::now() >= end) return status;
    std::this_thread::sleep_for(BetweenLooks);
  }
}

}  // namespace vintrace::posix
