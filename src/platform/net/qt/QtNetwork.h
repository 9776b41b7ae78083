#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "platform/net/Network.h"

namespace vintrace::qt {

/// The toolkit's network, run by the main thread's event loop.
class QtNetwork : public Network {
 public:
  explicit QtNetwork(WaitHooks hooks = {}) : hooks_(std::move(hooks)) {}

  std::unique_ptr<Connection> NewConnection(std::function<void()> changed) override;
  void WaitUntil(const std::function<bool()>& over) override;
  void DoEvents() override;
  std::int64_t Ticks() override;
  int InRange(int least, int most) override;
  String MD5(std::string_view text) override;

 private:
  class Wait;

  /// Runs the event loop without input of the user, until something happens.
  void RunLoopOnce();

  WaitHooks hooks_;
  int depth_ = 0;         // Nesting depth of `WaitUntil`.
  int runningLoops_ = 0;  // Nesting depth of `RunLoopOnce`.
  QTimer pause_;          // Wakes the loop if nothing happens.
};

}  // namespace vintrace::qt
