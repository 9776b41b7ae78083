#include "platform/linux/Launch.h"

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
#include "platform/posix/Process.h"
#include "platform/posix/UserFolders.h"

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

/// Raises what stands in the way of `item`.
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

/// Some take dots out of a path without looking where links lead, and would open another document.
FolderItem WithoutDots(const FolderItem& item) {
  const fs::path path = item.NativePath();
  if (path == path.lexically_normal()) return item;
  std::error_code error;
  const auto folder = fs::canonical(path.parent_path(), error);
  return error ? item : FolderItem((folder / path.filename()).native());
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

/// A launcher ends when it has started what it is to start. One that doesn't is ended with all that
/// it has started.
void AwaitLauncher(pid_t launcher, const FolderItem& entry) {
  constexpr std::chrono::seconds Patience(5);
  const auto status = posix::AwaitEnd(launcher, Patience);
  if (!status) {
    kill(-launcher, SIGKILL);
    posix::AwaitEnd(launcher);
    Refuse(entry, "gio doesn't answer");
  }
  if (*status != 0) Refuse(entry, "gio can't launch it");
}

void LaunchDesktopEntry(const FolderItem& entry, const FolderItem& document) {
  RequireFile(entry);
  const pid_t launcher =
      Start(entry, {.program = "gio",
                    .arguments = {"gio", "launch", entry.NativePath(), document.NativePath()},
                    .environment = EnvironmentForOthers()});
  AwaitLauncher(launcher, entry);
}

/// The prefix that `program` is installed in; empty when it is in none.
fs::path OwnPrefix(const FolderItem& program) {
  const fs::path path = program.NativePath();
  const auto prefix = PrefixOf(path);
  std::error_code error;
  return prefix.empty() ? PrefixOf(fs::canonical(path, error)) : prefix;
}

fs::path UsualPrefix() {
  const auto prefix = posix::UsualWinePrefix();
  return prefix ? fs::path(prefix->NativePath()) : fs::path();
}

void LaunchWindowsProgram(const FolderItem& program, const FolderItem& document) {
  RequireFile(program);
  RequireWindowsProgram(program);
  auto environment = EnvironmentForOthers();
  const auto own = OwnPrefix(program);
  if (!own.empty()) environment.Set("WINEPREFIX", own.native());
  const auto path = WindowsPath(document.NativePath(), own.empty() ? UsualPrefix() : own);
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
  RequireItem(document);
  const FolderItem followed = WithoutDots(document);
  std::error_code error;
  const bool isFolder = fs::is_directory(application.NativePath(), error);
  if (isFolder && HasSuffix(application, ".app")) {
    LaunchExecutable(ExecutableOfBundle(application), followed);
  } else if (HasSuffix(application, ".desktop")) {
    LaunchDesktopEntry(application, followed);
  } else if (HasSuffix(application, ".exe")) {
    LaunchWindowsProgram(application, followed);
  } else {
    LaunchExecutable(application, followed);
  }
}

}  // namespace vintrace::open
