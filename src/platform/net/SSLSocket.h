#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/net/Network.h"
#include "platform/text/String.h"

namespace vintrace {

/// A stream socket, secured by TLS or plain. Nothing waits: what happens is raised as an event, and
/// only from inside `Poll`, which the event loop calls unless somebody waits. A socket may be
/// destroyed at any time, in its own events too.
class SSLSocket {
 public:
  /// `network` lives longer.
  explicit SSLSocket(Network& network);
  SSLSocket(const SSLSocket&) = delete;
  SSLSocket& operator=(const SSLSocket&) = delete;
  virtual ~SSLSocket();

  /// The host to connect to, by name or address, and its port, 0 until it is set.
  String Address;
  std::int64_t Port = 0;
  /// The host that has to show a certificate; nil: `Address`. Another one behind a proxy.
  std::optional<String> PeerName;
  /// Which TLS is spoken. Here it is 1.2 or newer, whatever the number.
  int ConnectionType = 0;

  /// True: TLS on this connection. Set on a connected plain socket, it starts TLS there, and
  /// `Event_Connected` comes again when the handshake is done. What has come before and hasn't been
  /// read is dropped; what comes before the handshake begins ends the connection.
  bool Secure() const { return secure_; }
  void SetSecure(bool secure);

  /// Starts to connect; a connection that there is ends without an event. `Event_Connected` or
  /// `Event_Error` tells what came of it.
  void Connect();
  /// Queues bytes; without a connection they are dropped.
  void Write(std::string_view bytes);

  /// The bytes that have come and haven't been read; valid until the next operation.
  std::string_view Lookahead() const { return received_; }
  /// Takes the first `count` of them, or all if there are fewer.
  String Read(std::size_t count);
  String ReadAll();

  /// Raises what has happened, one after the other: what happens to a connection while one of its
  /// events runs is raised when that has returned, also if the event polls.
  void Poll();
  /// Drops what is queued, but for what the system has taken over already.
  void Purge();
  /// Ends the connection. What has come stays to be read; no event of it comes any more.
  void Close();

  /// True from `Event_Connected` until the connection ends.
  bool IsConnected() const { return isConnected_; }
  /// The `SocketError` with which the last connection ended or wasn't made.
  int LastErrorCode() const { return static_cast<int>(lastError_); }

 protected:
  virtual void Event_Connected() {}
  virtual void Event_DataAvailable() {}
  /// The connection couldn't be made or has ended. Comes once for a connection, with all bytes that
  /// have come before it still to be read.
  virtual void Event_Error() {}
  virtual void Event_SendComplete() {}

  /// Expires when the socket is destroyed.
  std::weak_ptr<void> Life() const { return life_; }

  Network& TheNetwork() const { return network_; }

 private:
  String CertificateName() const { return PeerName.value_or(Address); }
  class Raising;

  void StartTLS();
  void TakeReceived();
  void Raise(Connection::Change change);

  Network& network_;
  std::shared_ptr<void> life_ = std::make_shared<int>();
  std::unique_ptr<Connection> connection_;
  String received_;
  bool secure_ = false;
  bool isPlain_ = false;       // The connection has no TLS yet.
  std::int64_t number_ = 0;    // Of the connection,
  std::int64_t raising_ = -1;  // and of that of which an event runs.
  bool isConnected_ = false;
  SocketError lastError_ = SocketError::None;
};

}  // namespace vintrace
