#include "platform/QuitSignals.h"

#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigaction
#include <unistd.h>

#include <cerrno>

namespace vintrace {
namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};

volatile sig_atomic_t tellTo = -1;

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

/// From now on that handler takes those of the signals that `from` takes.
void Replace(void (*from)(int), void (*by)(int)) {
  for (const int signal : Signals) {
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == from) Handle(signal, by);
  }
}

void Tell(int /*signal*/) {
  const int error = errno;
  Replace(Tell, SIG_DFL);  // The next one of any kind ends the process.
  const char byte = 0;
  static_cast<void>(!write(tellTo, &byte, 1));
  errno = error;
}

}  // namespace

QuitSignals::QuitSignals() {
  if (pipe(pipe_.data()) != 0) return;
  for (const int end : pipe_) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  tellTo = pipe_[1];
  Replace(SIG_DFL, Tell);
}

QuitSignals::~QuitSignals() {
  Replace(Tell, SIG_DFL);
  tellTo = -1;
  for (const int end : pipe_) {
    if (end >= 0) close(end);
  }
}

}  // namespace vintrace
