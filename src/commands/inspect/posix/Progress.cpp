#include "commands/inspect/Progress.h"

#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigaction
#include <unistd.h>

#include <cstdio>

namespace vintrace::inspect {
namespace {

constexpr std::chrono::seconds Patience(2);
constexpr std::chrono::milliseconds BetweenUpdates(250);

volatile sig_atomic_t interrupt = 0;

}  // namespace

Progress::Progress()
    : isWanted_(isatty(STDERR_FILENO) == 1 && isatty(STDOUT_FILENO) == 0),
      next_(start_ + Patience) {}

void Progress::Count() {
  ++documents_;
  if (!isWanted_) return;
  const auto now = Clock::now();
  if (now < next_) return;
  next_ = now + BetweenUpdates;
  const std::chrono::duration<double> elapsed = now - start_;
  std::fprintf(stderr, "\r\x1B[K%lld files, %.0f a second", static_cast<long long>(documents_),
               static_cast<double>(documents_) / elapsed.count());
  isShown_ = true;
}

void Progress::Clear() {
  if (isShown_) std::fputs("\r\x1B[K", stderr);
  isShown_ = false;
}

void DeferInterrupts() {
  struct sigaction action {};
  action.sa_handler = [](int number) { interrupt = number; };
  // A write that were interrupted could leave a part of a row.
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
  for (const int number : {SIGINT, SIGTERM}) {
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
  }
}

int Interrupt() { return interrupt; }

void EndByInterrupt() { raise(interrupt); }

}  // namespace vintrace::inspect
