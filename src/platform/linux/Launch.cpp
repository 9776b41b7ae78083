#include "platform/linux/Launch.h"

#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/BinaryStream.h"
#include "platform/Exceptions.h"
#include "platform/linux/Bundle.h"
#include "platform/linux/Wine.h"
#include "platform/posix/Deadline.h"
#include "platform/posix/Process.h"

namespace vintrace::open {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const FolderItem& item, std::string_view reason) {
  throw RuntimeException(OneLine(item.NativePath()) + ": " + String(reason));
}

bool HasSuffix(const FolderItem& item, std::string_view suffix) {
  const String name = item.Name();
  return name.size() > suffix.size() &&
         TextEquals(std::string_view(name).substr(name.size() - suffix.size()), suffix);
}

/// What stands in the way of opening `item` as a file or folder; raises it.
void RequireItem(const FolderItem& item) {
  std::error_code error;
  const auto status = fs::status(item.NativePath(), error);
  if (status.type() == fs::file_type::not_found) Refuse(item, "It isn't there");
  if (error) Refuse(item, error.message());
}

void RequireFile(const FolderItem& item) {
  RequireItem(item);
  std::error_code error;
  if (!fs::is_regular_file(item.NativePath(), error)) Refuse(item, "It is no file");
}

/// Wine would say only later, and to no one, that a file is no program.
void RequireWindowsProgram(const FolderItem& item) {
  constexpr std::string_view Signature = "MZ";  // Of every executable file of DOS and Windows.
  try {
    auto stream = BinaryStream::Open(item);
    if (stream.Read(Signature.size()) == Signature) return;
  } catch (const IOException& exception) {
    Refuse(item, exception.what());
  }
  Refuse(item, "It is no Windows program");
}

/// The environment without our own commands, which are not for others.
posix::ProcessEnvironment EnvironmentForOthers() {
  posix::ProcessEnvironment environment;
  const String path = environment.Value("PATH");
  std::error_code error;
  const String own = fs::read_symlink("/proc/self/exe", error).parent_path().native() + ':';
  if (path.starts_with(own)) environment.Set("PATH", path.substr(own.size()));
  return environment;
}

pid_t Start(const FolderItem& item, const posix::Command& command) {
  try {
    return posix::StartProcess(command, posix::Ties::Cut);
  } catch (const IOException& exception) {
    const bool ofTheSystem = command.program.find('/') == String::npos;
    if (ofTheSystem && exception.ErrorNumber() == ENOENT) {
      Refuse(item, "It needs " + command.program + ", which isn't installed");
    }
    Refuse(item, "It can't be executed: " + String(exception.what()));
  }
}

/// The exit status of a launcher. One that says nothing for long has not started anything.
int StatusOfLauncher(pid_t launcher) {
  const posix::Deadline patience(std::chrono::seconds(10));
  int status = 0;
  while (waitpid(launcher, &status, WNOHANG) == 0) {
    if (patience.HasPassed()) kill(launcher, SIGKILL);
    posix::Pause();
  }
  return posix::ExitStatusOf(status);
}

void LaunchDesktopEntry(const FolderItem& entry, const FolderItem& document) {
  RequireFile(entry);
  const pid_t launcher =
      Start(entry, {.program = "gio",
                    .arguments = {"gio", "launch", entry.NativePath(), document.NativePath()},
                    .environment = EnvironmentForOthers()});
  if (StatusOfLauncher(launcher) != 0) Refuse(entry, "gio can't launch it");
}

void LaunchWindowsProgram(const FolderItem& program, const FolderItem& document) {
  RequireFile(program);
  RequireWindowsProgram(program);
  auto environment = EnvironmentForOthers();
  auto prefix = PrefixOf(program.NativePath());
  if (prefix.empty()) {
    prefix = UsualPrefix();
  } else {
    environment.Set("WINEPREFIX", prefix.native());
  }
  const auto path = WindowsPath(document.NativePath(), prefix);
  if (!path) Refuse(document, "A Windows program can't open a path with a backslash in it");
  Start(program, {.program = "wine",
                  .arguments = {"wine", program.NativePath(), *path},
                  .environment = std::move(environment)});
}

void LaunchExecutable(const FolderItem& executable, const FolderItem& document) {
  RequireFile(executable);
  Start(executable, {.program = executable.NativePath(),
                     .arguments = {executable.NativePath(), document.NativePath()},
                     .environment = EnvironmentForOthers()});
}

}  // namespace

void Launch(const FolderItem& application, const FolderItem& document) {
  RequireItem(application);
  RequireItem(document);
  std::error_code error;
  const bool isFolder = fs::is_directory(application.NativePath(), error);
  if (isFolder && HasSuffix(application, ".app")) {
    LaunchExecutable(ExecutableOfBundle(application), document);
  } else if (HasSuffix(application, ".desktop")) {
    LaunchDesktopEntry(application, document);
  } else if (HasSuffix(application, ".exe")) {
    LaunchWindowsProgram(application, document);
  } else {
    LaunchExecutable(application, document);
  }
}

}  // namespace vintrace::open
