#include "commands/open/Launch.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "commands/open/Wine.h"
#include "platform/files/posix/UserFolders.h"
#include "platform/process/posix/Process.h"
#include "platform/text/Exceptions.h"

namespace vintrace::open {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const FolderItem& item, std::string_view reason) {
  throw RuntimeException(item.NativePath() + ": " + String(reason));
}

/// Raises `RuntimeException` unless `item` exists and can be reached.
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

/// Resolves `.` and `..`, because some programs simplify paths textually. With links in the path,
/// they would open another document.
FolderItem WithoutDots(const FolderItem& item) {
  const fs::path path = item.NativePath();
  if (path == path.lexically_normal()) return item;
  std::error_code error;
  const auto folder = fs::canonical(path.parent_path(), error);
  return error ? item : FolderItem((folder / path.filename()).native());
}

/// Raises `RuntimeException` for a file that Wine would start to run and then refuse.
void RequireWindowsProgram(const FolderItem& item, const posix::ProcessEnvironment& environment) {
  const auto processor = ProcessorOf(item);
  if (!processor) Refuse(item, "It is no Windows program");
  if (WineRuns(*processor, environment)) return;
  Refuse(item, *processor == "i386" ? "It is a 32-bit program, and this Wine runs none (see wine32)"
                                    : "This Wine runs no programs for " + String(*processor));
}

/// The environment for another program, without the folder of the bundled commands in PATH.
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
    return posix::StartProcess(command, posix::Session::New);
  } catch (const IOException& exception) {
    const bool isOnSearchPath = command.program.find('/') == String::npos;
    if (!isOnSearchPath || exception.ErrorNumber() != ENOENT) throw;
    Refuse(item, "It needs " + command.program + ", which isn't installed");
  }
}

/// Waits for gio, which ends once it has started its application. If it doesn't end in time, kills
/// it with its whole session.
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

/// The Wine prefix in which `program` is installed; empty if it is in none.
fs::path OwnPrefix(const FolderItem& program) {
  const fs::path path = program.NativePath();
  const auto prefix = PrefixOf(path);
  std::error_code error;
  return prefix.empty() ? PrefixOf(fs::canonical(path, error)) : prefix;
}

fs::path DefaultPrefix() {
  const auto prefix = posix::DefaultWinePrefix();
  return prefix ? fs::path(prefix->NativePath()) : fs::path();
}

void LaunchWindowsProgram(const FolderItem& program, const FolderItem& document) {
  RequireFile(program);
  auto environment = EnvironmentForOthers();
  RequireWindowsProgram(program, environment);
  UseUTF8(environment);
  const auto own = OwnPrefix(program);
  if (!own.empty()) environment.Set("WINEPREFIX", own.native());
  const auto path = WindowsPath(document.NativePath(), own.empty() ? DefaultPrefix() : own);
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
  const String name = application.Name();
  if (TextEndsWith(name, ".desktop")) {
    LaunchDesktopEntry(application, followed);
  } else if (TextEndsWith(name, ".exe")) {
    LaunchWindowsProgram(application, followed);
  } else {
    LaunchExecutable(application, followed);
  }
}

}  // namespace vintrace::open
