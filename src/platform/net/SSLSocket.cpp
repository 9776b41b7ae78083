#include "platform/net/SSLSocket.h"

#include <utility>

#include "platform/text/Exceptions.h"

namespace vintrace {

SSLSocket::SSLSocket(Network& network) : network_(network) {}

SSLSocket::~SSLSocket() = default;

void SSLSocket::SetSecure(bool secure) {
  secure_ = secure;
  if (secure_ && isPlain_ && isConnected_) StartTLS();
}

void SSLSocket::StartTLS() {
  isConnected_ = false;
  isPlain_ = false;
  received_.clear();
  connection_->StartTLS(CertificateName());
}

void SSLSocket::Connect() {
  Close();
  received_.clear();
  postponed_.clear();
  lastError_ = SocketError::None;
  isPlain_ = !secure_;
  ++number_;
  connection_ = network_.NewConnection([this] { _RuntimeCall([this] { Poll(); }); });
  connection_->Open(Address, Port, secure_ ? std::optional(CertificateName()) : std::nullopt);
}

void SSLSocket::Write(std::string_view bytes) {
  if (connection_) connection_->Write(bytes);
}

String SSLSocket::Read(std::size_t count) {
  String bytes = received_.substr(0, count);
  received_.erase(0, count);
  return bytes;
}

String SSLSocket::ReadAll() { return std::exchange(received_, {}); }

/// Marks the connection whose event is running. The event may destroy the socket.
class SSLSocket::Raising {
 public:
  explicit Raising(SSLSocket& socket)
      : socket_(socket), life_(socket.life_), before_(socket.raising_) {
    socket.raising_ = socket.number_;
  }
  Raising(const Raising&) = delete;
  Raising& operator=(const Raising&) = delete;
  ~Raising() {
    if (!life_.expired()) socket_.raising_ = before_;
  }

 private:
  SSLSocket& socket_;
  std::weak_ptr<void> life_;
  std::int64_t before_;
};

void SSLSocket::Poll() {
  const auto life = Life();
  while (!life.expired() && connection_) {
    const auto change = NextChange();
    if (!change) return;
    const Raising raising(*this);
    Raise(*change);
  }
}

std::optional<Connection::Change> SSLSocket::NextChange() {
  const bool isInEvent = raising_ == number_;
  if (!isInEvent && !postponed_.empty()) {
    const auto change = postponed_.front();
    postponed_.pop_front();
    return change;
  }
  auto change = connection_->Next();
  for (; isInEvent && change && *change != Connection::Change::Ended;
       change = connection_->Next()) {
    postponed_.push_back(*change);
  }
  return change;
}

void SSLSocket::TakeReceived() {
  if (received_.empty()) {
    received_ = connection_->Take();
  } else {
    received_ += connection_->Take();
  }
}

void SSLSocket::Raise(Connection::Change change) {
  TakeReceived();
  switch (change) {
    case Connection::Change::Connected:
      // `Secure` was set while it was connecting.
      if (secure_ && isPlain_) return StartTLS();
      isConnected_ = true;
      return Event_Connected();
    case Connection::Change::DataAvailable:
      return Event_DataAvailable();
    case Connection::Change::SendComplete:
      return Event_SendComplete();
    case Connection::Change::Ended:
      isConnected_ = false;
      lastError_ = connection_->Error();
      connection_.reset();
      return Event_Error();
  }
}

void SSLSocket::Purge() {
  if (connection_) connection_->Purge();
}

void SSLSocket::Close() {
  isConnected_ = false;
  if (!connection_) return;
  TakeReceived();
  connection_.reset();
}

}  // namespace vintrace
