#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

#include "platform/net/Network.h"
#include "platform/text/String.h"

namespace vintrace {

/// A stream socket, secured by TLS or plain. No operation blocks. Events are raised only inside
/// `Poll`, which the event loop calls, except while `Network::WaitUntil` runs it. A socket may be
/// destroyed at any time, even in its own events.
class SSLSocket {
 public:
  /// `network` must outlive this object.
  explicit SSLSocket(Network& network);
  SSLSocket(const SSLSocket&) = delete;
  SSLSocket& operator=(const SSLSocket&) = delete;
  virtual ~SSLSocket();

  /// The host to connect to, by name or address, and its port, which is 0 until it is set.
  String Address;
  std::int64_t Port = 0;
  /// The host that the certificate must name; if nil, `Address`, which may be a proxy.
  std::optional<String> PeerName;
  /// The requested version of TLS. Ignored: the version is always 1.2 or newer.
  int ConnectionType = 0;

  /// True for a connection with TLS. Setting it on a connected plain socket starts TLS, and
  /// `Event_Connected` is raised again after the handshake. The bytes in `Lookahead` are dropped;
  /// others that arrive before the handshake end the connection.
  bool Secure() const { return secure_; }
  void SetSecure(bool secure);

  /// Starts to connect, and raises `Event_Connected` or `Event_Error` later. Ends an existing
  /// connection without an event.
  void Connect();
  /// Queues bytes to be sent. Without a connection, drops them.
  void Write(std::string_view bytes);

  /// The received bytes that haven't been read; valid until the next operation.
  std::string_view Lookahead() const { return received_; }
  /// Removes and returns the first `count` of these bytes, or all if there are fewer.
  String Read(std::size_t count);
  String ReadAll();

  /// Raises the pending events in order. During an event of a connection, only the connection's end
  /// is raised at once; its other events are raised after that event has returned.
  void Poll();
  /// Drops queued bytes that the system hasn't accepted yet.
  void Purge();
  /// Ends the connection without an event. The received bytes can still be read.
  void Close();

  /// True from `Event_Connected` until the connection ends.
  bool IsConnected() const { return isConnected_; }
  /// The `SocketError` with which the last connection ended or failed; 0 if it did neither.
  int LastErrorCode() const { return static_cast<int>(lastError_); }

 protected:
  virtual void Event_Connected() {}
  virtual void Event_DataAvailable() {}
  /// The connection failed or ended. Raised once for a connection. All bytes received before can
  /// still be read.
  virtual void Event_Error() {}
  virtual void Event_SendComplete() {}

  /// Expires when the socket is destroyed.
  std::weak_ptr<void> Life() const { return life_; }

  Network& TheNetwork() const { return network_; }
  /// True from `Connect` until the connection fails or ends.
  bool HasConnection() const { return connection_ != nullptr; }

 private:
  String CertificateName() const { return PeerName.value_or(Address); }
  class Raising;

  void StartTLS();
  /// The next change to raise; nil if there is none now.
  std::optional<Connection::Change> NextChange();
  void TakeReceived();
  void Raise(Connection::Change change);

  Network& network_;
  std::shared_ptr<void> life_ = std::make_shared<int>();
  std::unique_ptr<Connection> connection_;
  String received_;
  bool secure_ = false;
  bool isPlain_ = false;  // The connection has no TLS yet.
  // An event of one connection may start another. `Poll` raises changes of the current connection
  // at once, unless one of its own events is running: then it postpones them, except for the end.
  std::int64_t number_ = 0;                   // Id of the current connection.
  std::int64_t raising_ = -1;                 // Id of the connection whose event is running, or -1.
  std::deque<Connection::Change> postponed_;  // Until the running event has returned.
  bool isConnected_ = false;
  SocketError lastError_ = SocketError::None;
};

}  // namespace vintrace
