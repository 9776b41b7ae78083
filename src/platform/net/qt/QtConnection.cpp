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

namespace vintrace::qt {
namespace {

constexpr qint64 BlockSize = 65536;

QString Text(const String& bytes) { return QString::fromUtf8(QByteArray::fromStdString(bytes)); }

/// `host` in ASCII: an address as it is, a name as in DNS. Empty if it can't be a host.
String HostInASCII(const String& host) {
  return QHostAddress(Text(host)).isNull() ? QUrl::toAce(Text(host)).toStdString() : host;
}

/// The one place that translates the toolkit's errors.
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

QtConnection::QtConnection(std::function<void()> changed, const int& waits)
    : changed_(std::move(changed)), waits_(waits) {
  MakeSocket();
}

void QtConnection::MakeSocket() {
  socket_ = std::make_unique<QSslSocket>();
  socket_->setProtocol(QSsl::TlsV1_2OrLater);
  socket_->setPeerVerifyMode(QSslSocket::VerifyPeer);
  // Otherwise the toolkit would use a proxy from the environment.
  socket_->setProxy(QNetworkProxy::NoProxy);
  QSslSocket* socket = socket_.get();
  QObject::connect(socket, &QSslSocket::connected, [this] {
    isReached_ = true;
    if (!tlsName_) Report(Change::Connected);
  });
  QObject::connect(socket, &QSslSocket::encrypted, [this] { Verify(); });
  QObject::connect(socket, &QSslSocket::sslErrors, [this] { End(SocketError::NotTrusted); });
  QObject::connect(socket, &QSslSocket::readyRead, [this] { Receive(); });
  QObject::connect(socket, &QSslSocket::encryptedBytesWritten, [this] { Send(); });
  QObject::connect(socket, &QSslSocket::bytesWritten, [this] { Send(); });
  QObject::connect(socket, &QSslSocket::errorOccurred,
                   [this](QAbstractSocket::SocketError error) { Fail(ErrorOf(error)); });
  QObject::connect(socket, &QSslSocket::disconnected, [this] { End(SocketError::Ended); });
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
  constexpr std::chrono::milliseconds BetweenLooks(5);
  const auto addresses = resolver_->Addresses();
  if (!addresses) {
    QTimer::singleShot(BetweenLooks, &context_, [this] { AwaitAddresses(); });
    return;
  }
  resolver_.reset();
  addresses_.assign(addresses->begin(), addresses->end());
  TryNext(SocketError::NameNotFound);
}

void QtConnection::TryNext(SocketError error) {
  if (addresses_.empty()) return End(error);
  const QString address = Text(addresses_.front());
  addresses_.pop_front();
  if (tlsName_) {
    socket_->connectToHostEncrypted(address, port_, Text(*tlsName_));
  } else {
    socket_->connectToHost(address, port_);
  }
}

void QtConnection::Fail(SocketError error) {
  if (isReached_ || addresses_.empty()) return End(error);
  // Later: the socket that reported the error is still in use.
  QTimer::singleShot(0, &context_, [this, error] {
    MakeSocket();
    TryNext(error);
  });
}

void QtConnection::StartTLS(const String& tlsName) {
  isOpen_ = false;
  Receive();
  if (hasEnded_) return;
  // Bytes received in the clear must never pass for bytes received through TLS.
  std::erase(changes_, Change::DataAvailable);
  if (!std::exchange(received_, {}).empty()) return End(SocketError::NotSecure);
  tlsName_ = tlsName;
  socket_->setPeerVerifyName(Text(tlsName));
  socket_->startClientEncryption();
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
  if (!socket_->isOpen()) return;
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
  constexpr int MillisecondsDuringWait = 20;
  if (std::exchange(isAnnounced_, true)) return;
  QTimer::singleShot(waits_ > 0 ? MillisecondsDuringWait : 0, &context_, [this] {
    isAnnounced_ = false;
    if (changes_.empty()) return;
    if (waits_ > 0) return Announce();
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
