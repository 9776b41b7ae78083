#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/net/Network.h"

namespace vintrace::qt {

/// Qt's network, run by the main thread's event loop.
class QtNetwork : public Network {
 public:
  explicit QtNetwork(WaitHooks hooks = {}) : hooks_(std::move(hooks)) {}

  std::unique_ptr<Connection> NewConnection(std::function<void()> changed) override;
  void WaitUntil(const std::function<bool()>& over) override;
  void DoEvents() override;
  std::int64_t Ticks() override;
  int InRange(int least, int most) override;
  String MD5(std::string_view text) override;

  /// Calls `call` once from the event loop, unless `context` is destroyed before. While `WaitUntil`
  /// runs the loop, calls are held back until `DoEvents` or the end of the wait.
  void CallLater(QObject* context, const std::function<void()>& call);

 private:
  class Wait;
  struct HeldCall {
    QPointer<QObject> context;
    std::function<void()> call;
  };

  /// Runs the event loop without input of the user, until something happens.
  void RunLoopOnce();
  void ScheduleHeldCalls();

  WaitHooks hooks_;
  int depth_ = 0;         // Nesting depth of `WaitUntil`.
  int runningLoops_ = 0;  // Nesting depth of `RunLoopOnce`.
  QTimer pause_;          // Wakes the loop if nothing happens.
  std::vector<HeldCall> heldCalls_;
};

}  // namespace vintrace::qt
