#include "platform/qt/QtNetwork.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QEventLoop>
#include <QRandomGenerator>
#include <chrono>
#include <utility>

#include "platform/qt/QtConnection.h"

namespace vintrace::qt {

std::unique_ptr<Connection> QtNetwork::NewConnection(std::function<void()> changed) {
  return std::make_unique<QtConnection>(std::move(changed), waits_);
}

void QtNetwork::GiveWay() {
  constexpr std::chrono::milliseconds Pause(10);
  pause_.start(Pause);
  ++waits_;
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                  QEventLoop::WaitForMoreEvents);
  --waits_;
  pause_.stop();
}

void QtNetwork::DoEvents() { QCoreApplication::processEvents(); }

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
