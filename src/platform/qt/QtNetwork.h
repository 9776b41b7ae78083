#pragma once

#include <QTimer>
#include <memory>

#include "platform/Network.h"

namespace vintrace::qt {

/// The network of the toolkit, in the main thread's event loop.
class QtNetwork : public Network {
 public:
  std::unique_ptr<Connection> NewConnection(std::function<void()> changed) override;
  void GiveWay() override;
  void DoEvents() override;
  std::int64_t Ticks() override;
  int InRange(int least, int most) override;
  String MD5(std::string_view text) override;

 private:
  int waits_ = 0;
  QTimer pause_;  // Ends a wait in which nothing happens.
};

}  // namespace vintrace::qt
