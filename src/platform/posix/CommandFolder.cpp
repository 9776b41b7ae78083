// The folder of our commands, on Linux.

#include "platform/posix/CommandFolder.h"

#include <filesystem>
#include <system_error>

namespace vintrace::posix {

String CommandFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  // Both relative to the program's own folder.
  for (const char* place : {VINTRACE_COMMANDS_WHEN_BUILT, VINTRACE_COMMANDS_WHEN_INSTALLED}) {
    const auto folder = std::filesystem::canonical(program.parent_path() / place, error);
    if (!error) return folder.native();
  }
  return {};
}

}  // namespace vintrace::posix
