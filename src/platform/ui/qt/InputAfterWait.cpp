#include "platform/ui/qt/InputAfterWait.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>

namespace vintrace::qt {

void InputAfterWait::WaitBegins() {
  isWaiting_ = true;
  isDue_ = true;
}

void InputAfterWait::Handle() {
  constexpr std::chrono::milliseconds AtMost(500);
  if (isWaiting_ || !std::exchange(isDue_, false)) return;
  ++handling_;
  QCoreApplication::processEvents(QEventLoop::AllEvents, AtMost.count());
  --handling_;
}

}  // namespace vintrace::qt
