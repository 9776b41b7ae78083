#include "platform/process/QuitSignals.h"

#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigaction
#include <unistd.h>

#include <array>
#include <cerrno>

namespace vintrace {
namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};

volatile sig_atomic_t pipeToWrite = Descriptor::None;

void WriteToPipe(int /*signal*/) {
  const int error = errno;
  const char byte = 0;
  static_cast<void>(!write(pipeToWrite, &byte, 1));
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
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return;
  for (const int end : ends) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  reader_ = Descriptor(ends[0]);
  writer_ = Descriptor(ends[1]);
  pipeToWrite = writer_.Number();
  for (const int signal : Signals) {
    if (!IsIgnored(signal)) Handle(signal, WriteToPipe);
  }
}

QuitSignals::~QuitSignals() {
  for (const int signal : Signals) {
    if (!IsIgnored(signal)) Handle(signal, SIG_DFL);
  }
  pipeToWrite = Descriptor::None;
}

}  // namespace vintrace
