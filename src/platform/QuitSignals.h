#pragma once

#include <array>

namespace vintrace {

/// While it lives, the signals with which a session or a terminal asks a program to end (SIGTERM,
/// SIGHUP and SIGINT) don't end the process but can be read. Those that the process was started to
/// ignore stay ignored, and a second one of a kind ends the process, in case nobody reads the
/// first; one of another kind doesn't, as the end of a session sends SIGTERM and SIGHUP together.
/// One object at a time.
class QuitSignals {
 public:
  /// Does nothing when the system has no pipe to give.
  QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;
  ~QuitSignals();

  /// Readable once a signal has come. -1: none will be told.
  int Descriptor() const { return pipe_[0]; }

 private:
  std::array<int, 2> pipe_{-1, -1};
};

}  // namespace vintrace
