#include "platform/QuitSignals.h"

#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigaction
#include <unistd.h>

#include <cerrno>

namespace vintrace {
namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};

volatile sig_atomic_t tellTo = -1;

void Tell(int /*signal*/) {
  const int error = errno;
  const char byte = 0;
  static_cast<void>(!write(tellTo, &byte, 1));
  errno = error;
}

bool IsIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  sigaction(signal, &action, nullptr);
}

}  // namespace

QuitSignals::QuitSignals() {
  if (pipe(pipe_.data()) != 0) return;
  for (const int end : pipe_) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  tellTo = pipe_[1];
  for (const int signal : Signals) {
    if (!IsIgnored(signal)) Handle(signal, Tell);
  }
}

QuitSignals::~QuitSignals() {
  for (const int signal : Signals) {
    if (!IsIgnored(signal)) Handle(signal, SIG_DFL);
  }
  tellTo = -1;
  for (const int end : pipe_) {
    if (end >= 0) close(end);
  }
}

}  // namespace vintrace
