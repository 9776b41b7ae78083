#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Network.h"
#include "platform/qt/MakeNetwork.h"

namespace vintrace::qt {

/// The network of the toolkit, in the main thread's event loop.
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

  void GiveWay();

  WaitHooks hooks_;
  int depth_ = 0;      // Of the waits, one inside the other,
  int givingWay_ = 0;  // and of those in which the loop runs now.
  QTimer pause_;       // Ends a wait in which nothing happens.
};

}  // namespace vintrace::qt
