#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Network.h"

namespace vintrace::qt {

/// The network of the toolkit, in the main thread's event loop.
class QtNetwork : public Network {
 public:
  /// `waits` is called with true when a wait begins and with false when it has ended.
  explicit QtNetwork(std::function<void(bool)> waits = [](bool) {}) : waits_(std::move(waits)) {}

  std::unique_ptr<Connection> NewConnection(std::function<void()> changed) override;
  void WaitUntil(const std::function<bool()>& over) override;
  void DoEvents() override;
  std::int64_t Ticks() override;
  int InRange(int least, int most) override;
  String MD5(std::string_view text) override;

 private:
  class Wait;

  void GiveWay();

  std::function<void(bool)> waits_;
  int depth_ = 0;      // Of the waits, one inside the other,
  int givingWay_ = 0;  // and of those in which the loop runs now.
  QTimer pause_;       // Ends a wait in which nothing happens.
};

}  // namespace vintrace::qt
