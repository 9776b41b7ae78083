#pragma once

#include <QSslSocket>
#include <QTimer>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/net/HostResolver.h"
#include "platform/net/Network.h"
#include "platform/net/SocketCopy.h"

namespace vintrace::qt {

class QtNetwork;

/// A connection on Qt's sockets. The addresses of a host are tried in their order, each
/// 250 ms after the one before or as soon as that has failed, and the first to accept is taken
/// (RFC 8305, sections 5 and 8).
class QtConnection : public Connection {
 public:
  /// `changed`: see `Network::NewConnection`. `network` must outlive this object.
  QtConnection(std::function<void()> changed, QtNetwork& network);
  QtConnection(const QtConnection&) = delete;
  QtConnection& operator=(const QtConnection&) = delete;
  ~QtConnection() override;

  void Open(const String& host, std::int64_t port, const std::optional<String>& tlsName) override;
  void StartTLS(const String& tlsName) override;
  void Write(std::string_view bytes) override;
  void Purge() override;
  String Take() override { return std::exchange(received_, {}); }
  std::optional<Change> Next() override;
  SocketError Error() const override { return error_; }

 private:
  using Socket = std::unique_ptr<QSslSocket>;

  void AwaitAddresses();
  /// Starts to connect to the next address, if there is one.
  void TryNext();
  /// Removes `attempt` from the attempts. The caller owns it.
  Socket Detach(QSslSocket* attempt);
  void DropAttempt(QSslSocket* attempt, SocketError error);
  /// Makes `attempt`, which is connected, the socket of this connection.
  void Adopt(QSslSocket* attempt);
  void StartHandshake();
  /// Ends the connection after an error of the socket.
  void Fail(SocketError error);
  /// Receives what the socket left unread when it failed.
  void Recover();
  void Verify();
  void Receive();
  void Send();
  void Report(Change change);
  void End(SocketError error);
  /// Schedules a call of `changed` from the event loop.
  void Announce();

  std::function<void()> changed_;
  QtNetwork& network_;
  QObject context_;  // Cancels the scheduled calls when it is destroyed.
  bool isAnnounced_ = false;
  std::optional<HostResolver> resolver_;
  std::chrono::milliseconds pause_{1};  // Before the resolver is asked again.
  std::deque<String> addresses_;        // Not tried yet.
  quint16 port_ = 0;
  std::vector<Socket> attempts_;  // Still connecting.
  QTimer nextAttempt_;
  std::optional<SocketCopy> copy_;  // Of `socket_`.
  Socket socket_;                   // Nil until an address has accepted.
  std::optional<String> tlsName_;
  std::deque<Change> changes_;
  String received_;
  String toSend_;
  std::size_t sent_ = 0;  // Bytes of `toSend_` given to the socket.
  bool isOpen_ = false;   // `Connected` was reported.
  bool isSending_ = false;
  bool hasEnded_ = false;
  SocketError error_ = SocketError::None;
};

}  // namespace vintrace::qt
