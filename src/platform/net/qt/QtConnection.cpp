#include "platform/net/qt/QtConnection.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QPointer>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "platform/net/qt/CertificateNames.h"
#include "platform/net/qt/QtNetwork.h"

namespace vintrace::qt {
namespace {

constexpr qint64 BlockSize = 65536;

QString Text(const String& bytes) { return QString::fromUtf8(QByteArray::fromStdString(bytes)); }

/// `host` in ASCII: an address as it is, a name as in DNS. Empty if it can't be a host.
String HostInASCII(const String& host) {
  return QHostAddress(Text(host)).isNull() ? QUrl::toAce(Text(host)).toStdString() : host;
}

/// The one place that translates Qt's errors.
SocketError ErrorOf(QAbstractSocket::SocketError error) {
  switch (error) {
    case QAbstractSocket::RemoteHostClosedError:
      return SocketError::Ended;
    case QAbstractSocket::HostNotFoundError:
      return SocketError::NameNotFound;
    case QAbstractSocket::ConnectionRefusedError:
      return SocketError::Refused;
    case QAbstractSocket::NetworkError:
    case QAbstractSocket::SocketTimeoutError:
      return SocketError::Unreachable;
    case QAbstractSocket::SslHandshakeFailedError:
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::SslInvalidUserDataError:
      return SocketError::NotSecure;
    default:
      return SocketError::Other;
  }
}

}  // namespace

QtConnection::QtConnection(std::function<void()> changed, QtNetwork& network)
    : changed_(std::move(changed)), network_(network) {
  nextAttempt_.setSingleShot(true);
  QObject::connect(&nextAttempt_, &QTimer::timeout, [this] { TryNext(); });
}

QtConnection::~QtConnection() {
  // Ends TLS properly, if that is possible without waiting.
  if (!std::exchange(hasEnded_, true) && isOpen_) socket_->disconnectFromHost();
}

void QtConnection::Open(const String& host, std::int64_t port,
                        const std::optional<String>& tlsName) {
  constexpr std::int64_t LastPort = 65535;
  if (port < 1 || port > LastPort) return End(SocketError::InvalidPort);
  const String name = HostInASCII(host);
  if (name.empty()) return End(SocketError::NameNotFound);
  tlsName_ = tlsName;
  port_ = static_cast<quint16>(port);
  resolver_.emplace(name);
  AwaitAddresses();
}

// Called at the start too, so that an address or a name from the hosts file causes no delay.
void QtConnection::AwaitAddresses() {
  constexpr std::chrono::milliseconds LongestPause(16);
  const auto addresses = resolver_->Addresses();
  if (!addresses) {
    QTimer::singleShot(pause_, &context_, [this] { AwaitAddresses(); });
    pause_ = std::min(2 * pause_, LongestPause);
    return;
  }
  resolver_.reset();
  addresses_.assign(addresses->begin(), addresses->end());
  if (addresses_.empty()) return End(SocketError::NameNotFound);
  TryNext();
}

void QtConnection::TryNext() {
  constexpr std::chrono::milliseconds AttemptDelay(250);  // RFC 8305, section 8.
  nextAttempt_.stop();
  if (addresses_.empty()) return;
  const QString address = Text(addresses_.front());
  addresses_.pop_front();
  auto* attempt = attempts_.emplace_back(std::make_unique<QSslSocket>()).get();
  // Otherwise Qt would use a proxy from the environment.
  attempt->setProxy(QNetworkProxy::NoProxy);
  QObject::connect(attempt, &QSslSocket::connected, &context_, [=, this] { Adopt(attempt); });
  QObject::connect(
      attempt, &QSslSocket::errorOccurred, &context_,
      [=, this](QAbstractSocket::SocketError error) { DropAttempt(attempt, ErrorOf(error)); });
  nextAttempt_.start(AttemptDelay);
  attempt->connectToHost(address, port_);
}

QtConnection::Socket QtConnection::Detach(QSslSocket* attempt) {
  attempt->disconnect(&context_);
  const auto found = std::ranges::find(attempts_, attempt, &Socket::get);
  Socket detached = std::move(*found);
  attempts_.erase(found);
  return detached;
}

void QtConnection::DropAttempt(QSslSocket* attempt, SocketError error) {
  Detach(attempt).release()->deleteLater();  // It is still in use.
  if (!addresses_.empty()) return TryNext();
  if (attempts_.empty()) End(error);
}

void QtConnection::Adopt(QSslSocket* attempt) {
  socket_ = Detach(attempt);
  attempts_.clear();
  addresses_.clear();
  nextAttempt_.stop();
  copy_.emplace(socket_->socketDescriptor());
  socket_->setProtocol(QSsl::TlsV1_2OrLater);
  socket_->setPeerVerifyMode(QSslSocket::VerifyPeer);
  QObject::connect(attempt, &QSslSocket::encrypted, [this] { Verify(); });
  QObject::connect(attempt, &QSslSocket::sslErrors, [this] { End(SocketError::NotTrusted); });
  QObject::connect(attempt, &QSslSocket::readyRead, [this] { Receive(); });
  QObject::connect(attempt, &QSslSocket::encryptedBytesWritten, [this] { Send(); });
  QObject::connect(attempt, &QSslSocket::bytesWritten, [this] { Send(); });
  QObject::connect(attempt, &QSslSocket::errorOccurred,
                   [this](QAbstractSocket::SocketError error) { Fail(ErrorOf(error)); });
  QObject::connect(attempt, &QSslSocket::disconnected, [this] { End(SocketError::Ended); });
  if (tlsName_) return StartHandshake();
  Report(Change::Connected);
}

void QtConnection::StartHandshake() {
  socket_->setPeerVerifyName(Text(*tlsName_));
  socket_->startClientEncryption();
}

void QtConnection::Fail(SocketError error) {
  if (isOpen_ && !hasEnded_) Recover();
  End(error);
}

// When a write fails, as a server that refuses a large body may have closed the connection, Qt
// closes the descriptor with the server's reply unread. The reply is handed to Qt's inner socket as
// if that had read it, so that it is decrypted like all others.
void QtConnection::Recover() {
  auto* const inner = socket_->findChild<QTcpSocket*>();
  const String rest = copy_->Received();
  if (inner == nullptr || rest.empty()) return;
  const QByteArray bytes = inner->readAll().append(rest);
  std::for_each(bytes.rbegin(), bytes.rend(), [&](char each) { inner->ungetChar(each); });
  emit inner->readyRead();
}

void QtConnection::StartTLS(const String& tlsName) {
  isOpen_ = false;
  Receive();
  if (hasEnded_) return;
  // Bytes received in the clear must never pass for bytes received through TLS.
  std::erase(changes_, Change::DataAvailable);
  if (!std::exchange(received_, {}).empty()) return End(SocketError::NotSecure);
  tlsName_ = tlsName;
  StartHandshake();
}

void QtConnection::Verify() {
  if (!HoldsFor(socket_->peerCertificate(), Text(*tlsName_))) return End(SocketError::NotTrusted);
  Report(Change::Connected);
}

void QtConnection::Write(std::string_view bytes) {
  toSend_ += bytes;
  Send();
}

void QtConnection::Purge() {
  toSend_.clear();
  sent_ = 0;
}

void QtConnection::Send() {
  if (!isOpen_ || hasEnded_) return;
  const qint64 waiting = socket_->bytesToWrite() + socket_->encryptedBytesToWrite();
  if (sent_ == toSend_.size()) {
    Purge();
    if (waiting == 0 && std::exchange(isSending_, false)) Report(Change::SendComplete);
    return;
  }
  const auto room = static_cast<std::size_t>(std::max(BlockSize - waiting, qint64{0}));
  const auto count = std::min(toSend_.size() - sent_, room);
  if (count == 0) return;
  isSending_ = true;
  socket_->write(toSend_.data() + sent_, static_cast<qint64>(count));
  sent_ += count;
}

void QtConnection::Receive() {
  if (!socket_ || !socket_->isOpen()) return;
  std::array<char, BlockSize> bytes;
  qint64 count = socket_->read(bytes.data(), BlockSize);
  if (count <= 0) return;
  for (; count > 0; count = socket_->read(bytes.data(), BlockSize)) {
    received_.append(bytes.data(), static_cast<std::size_t>(count));
  }
  Report(Change::DataAvailable);
}

std::optional<Connection::Change> QtConnection::Next() {
  if (changes_.empty()) return std::nullopt;
  const Change change = changes_.front();
  changes_.pop_front();
  return change;
}

void QtConnection::Report(Change change) {
  if (hasEnded_) return;
  if (change == Change::Connected) {
    isOpen_ = true;
    Send();
  }
  const bool isKnown = change == Change::DataAvailable && !changes_.empty() &&
                       changes_.back() == Change::DataAvailable;
  if (!isKnown) changes_.push_back(change);
  Announce();
}

// A blocking wait polls; notifications are deferred until it ends.
void QtConnection::Announce() {
  if (std::exchange(isAnnounced_, true)) return;
  network_.CallLater(&context_, [this] {
    isAnnounced_ = false;
    if (changes_.empty()) return;
    // `changed` may destroy this object, or leave changes unread.
    const auto changed = changed_;
    const QPointer<QObject> context(&context_);
    changed();
    if (context && !changes_.empty()) Announce();
  });
}

void QtConnection::End(SocketError error) {
  if (hasEnded_) return;
  Receive();
  if (hasEnded_) return;
  error_ = error;
  Report(Change::Ended);
  hasEnded_ = true;
}

}  // namespace vintrace::qt
