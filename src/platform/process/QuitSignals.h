#pragma once

#include "platform/files/Descriptor.h"

namespace vintrace {

/// While it exists, the first SIGTERM, SIGHUP or SIGINT of each kind doesn't end the process, but
/// makes a descriptor readable. A second signal of the same kind ends it, in case the program
/// hangs. (The end of a session sends SIGTERM and SIGHUP together.) Signals that the process was
/// started to ignore stay ignored. One object at a time.
class QuitSignals {
 public:
  /// Changes nothing if the system has no pipe left.
  QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;
  ~QuitSignals();

  /// Readable after a signal. -1 if there is no pipe.
  int Number() const { return reader_.Number(); }

 private:
  Descriptor reader_;
  Descriptor writer_;
};

}  // namespace vintrace
