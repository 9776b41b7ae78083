#pragma once

#include "platform/files/Descriptor.h"

namespace vintrace {

/// While this object exists, the first signal of each kind (SIGTERM, SIGHUP, SIGINT) makes a
/// descriptor readable instead of ending the process. A second one of the same kind ends it, in
/// case the program hangs; the end of a session sends SIGTERM and SIGHUP together. Signals that the
/// process was started to ignore stay ignored. At most one object may exist.
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
