// open -a APPLICATION DOCUMENT: the command of macOS for systems without it, bundled with the
// program.

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "commands/open/Launch.h"
#include "platform/files/FolderItem.h"
#include "platform/process/posix/HardenProcess.h"
#include "platform/text/Exceptions.h"

namespace vintrace::open {
namespace {

enum ExitStatus { Started = 0, NotStarted = 1 };

/// Writes a line to standard error, unless that would block.
ExitStatus Complain(std::string_view reason) {
  const String line = "open: " + OneLine(reason) + '\n';
  pollfd errors{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
  if (poll(&errors, 1, 0) > 0) std::fwrite(line.data(), 1, line.size(), stderr);
  return NotStarted;
}

/// The item of an argument by its absolute path, which the application can't take for an option.
FolderItem ItemOf(const char* argument) {
  std::error_code unknown;
  return ItemRelativeTo(std::filesystem::current_path(unknown).native(), argument);
}

ExitStatus Run(int argc, char* argv[]) {
  if (argc != 4 || std::string_view(argv[1]) != "-a") {
    return Complain("Usage: open -a APPLICATION DOCUMENT");
  }
  try {
    Launch(ItemOf(argv[2]), ItemOf(argv[3]));
    return Started;
  } catch (const std::exception& exception) {
    return Complain(exception.what());
  }
}

}  // namespace
}  // namespace vintrace::open

int main(int argc, char* argv[]) {
  vintrace::posix::HardenProcess();
  return vintrace::open::Run(argc, argv);
}
