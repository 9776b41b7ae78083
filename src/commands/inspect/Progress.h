#pragma once

#include <chrono>
#include <cstdint>

namespace vintrace::inspect {

/// A line on standard error with the number of files and their rate, which the destructor
/// removes. Shown only after two seconds, and if standard error is a terminal and standard output,
/// whose rows would run into it, is none.
class Progress {
 public:
  Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  /// Counts a file.
  void Count();
  /// Removes the line, until the next file.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  const bool isWanted_;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point next_;
  std::int64_t documents_ = 0;
  bool isShown_ = false;
};

/// From now on, the first SIGINT or SIGTERM doesn't end the process; a second one does.
void DeferInterrupts();
/// The signal that came; 0 if none did.
int Interrupt();
/// Ends the process by the signal that came.
void EndByInterrupt();

}  // namespace vintrace::inspect
