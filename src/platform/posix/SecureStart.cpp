#include "platform/posix/SecureStart.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace vintrace::posix {

void SecureStart() {
  // The lowest free number is given out, so that one of 0 to 2 is filled as long as one is free.
  int descriptor = open("/dev/null", O_RDWR);
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDWR);
  if (descriptor > STDERR_FILENO) close(descriptor);
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  static_cast<void>(std::signal(SIGCHLD, SIG_DFL));
}

}  // namespace vintrace::posix
