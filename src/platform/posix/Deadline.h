#pragma once

#include <algorithm>
#include <chrono>
#include <thread>

namespace vintrace::posix {

/// A moment until which something is waited for.
class Deadline {
 public:
  explicit Deadline(std::chrono::milliseconds fromNow) : moment_(Clock::now() + fromNow) {}

  bool HasPassed() const { return Clock::now() >= moment_; }

  /// For `poll`: rounded up, so that it is 0 only when the moment has passed.
  int MillisecondsLeft() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment_ - Clock::now());
    return static_cast<int>(std::max(left.count(), decltype(left.count()){0}));
  }

 private:
  using Clock = std::chrono::steady_clock;

  Clock::time_point moment_;
};

/// The pause between two looks at what tells nobody that it has changed.
inline void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(10)); }

}  // namespace vintrace::posix
