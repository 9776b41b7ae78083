#include "platform/net/qt/QtNetwork.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QEventLoop>
#include <QRandomGenerator>
#include <chrono>
#include <utility>

#include "platform/net/qt/QtConnection.h"

namespace vintrace::qt {

/// Reports the start and the end of the outermost wait.
class QtNetwork::Wait {
 public:
  explicit Wait(QtNetwork& network) : network_(network) {
    if (network_.depth_++ == 0) network_.hooks_.waits(true);
  }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;
  ~Wait() {
    if (--network_.depth_ != 0) return;
    network_.ScheduleHeldCalls();
    network_.hooks_.waits(false);
  }

 private:
  QtNetwork& network_;
};

std::unique_ptr<Connection> QtNetwork::NewConnection(std::function<void()> changed) {
  return std::make_unique<QtConnection>(std::move(changed), *this);
}

void QtNetwork::WaitUntil(const std::function<bool()>& over) {
  const Wait wait(*this);
  while (!over() && !hooks_.quits()) RunLoopOnce();
}

void QtNetwork::RunLoopOnce() {
  constexpr std::chrono::milliseconds Pause(10);
  pause_.start(Pause);
  ++runningLoops_;
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                  QEventLoop::WaitForMoreEvents);
  --runningLoops_;
  pause_.stop();
}

void QtNetwork::DoEvents() {
  ScheduleHeldCalls();
  QCoreApplication::processEvents();
}

void QtNetwork::CallLater(QObject* context, const std::function<void()>& call) {
  const auto callOrHold = [this, context, call] {
    if (runningLoops_ > 0) {
      heldCalls_.push_back({context, call});
    } else {
      call();
    }
  };
  QTimer::singleShot(0, context, callOrHold);
}

void QtNetwork::ScheduleHeldCalls() {
  for (const auto& [context, call] : std::exchange(heldCalls_, {})) {
    if (context) CallLater(context, call);
  }
}

std::int64_t QtNetwork::Ticks() {
  using Tick = std::chrono::duration<std::int64_t, std::ratio<1, 60>>;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<Tick>(now).count();
}

int QtNetwork::InRange(int least, int most) {
  return QRandomGenerator::system()->bounded(least, most + 1);
}

String QtNetwork::MD5(std::string_view text) {
  const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
  return QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toStdString();
}

}  // namespace vintrace::qt
