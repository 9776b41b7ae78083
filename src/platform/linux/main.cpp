// open -a APPLICATION DOCUMENT: what macOS has a command for and Linux has not. The program's own.

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/Exceptions.h"
#include "platform/FolderItem.h"
#include "platform/linux/Launch.h"
#include "platform/posix/SecureStart.h"

namespace vintrace::open {
namespace {

enum ExitStatus { Started = 0, NotStarted = 1 };

/// A reader that doesn't read is not waited for.
ExitStatus Complain(std::string_view reason) {
  const String line = "open: " + String(reason) + '\n';
  pollfd errors{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
  if (poll(&errors, 1, 0) > 0) std::fwrite(line.data(), 1, line.size(), stderr);
  return NotStarted;
}

/// An absolute path can be no option of the application's, whatever it begins with.
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
  vintrace::posix::SecureStart();
  return vintrace::open::Run(argc, argv);
}
