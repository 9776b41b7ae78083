#include "platform/process/posix/HardenProcess.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace vintrace::posix {

void HardenProcess() {
  // The system gives out the lowest free number, so this fills 0 to 2 first.
  int descriptor = open("/dev/null", O_RDWR);
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDWR);
  if (descriptor > STDERR_FILENO) close(descriptor);
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  static_cast<void>(std::signal(SIGCHLD, SIG_DFL));
}

}  // namespace vintrace::posix
