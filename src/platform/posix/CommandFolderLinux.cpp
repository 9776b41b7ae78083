#include "platform/posix/CommandFolder.h"

#include <filesystem>
#include <system_error>

#include "platform/Exceptions.h"

namespace vintrace::posix {

namespace {

/// Empty when the folder isn't there.
String FolderBeside(const std::filesystem::path& program) {
  // Both relative to the program's own folder.
  for (const char* place : {VINTRACE_COMMANDS_WHEN_BUILT, VINTRACE_COMMANDS_WHEN_INSTALLED}) {
    std::error_code error;
    const auto folder = std::filesystem::canonical(program.parent_path() / place, error);
    if (!error) return folder.native();
  }
  return {};
}

}  // namespace

String CommandFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  String folder = error ? String() : FolderBeside(program);
  if (folder.empty()) throw RuntimeException("The program's own commands aren't beside it");
  if (folder.find(':') != String::npos) {
    throw RuntimeException("The program lies in a folder with a colon in its path");
  }
  return folder;
}

}  // namespace vintrace::posix
