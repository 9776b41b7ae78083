#pragma once

#include <QSslSocket>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/net/HostResolver.h"
#include "platform/net/Network.h"

namespace vintrace::qt {

/// A connection on the toolkit's sockets.
class QtConnection : public Connection {
 public:
  /// `changed`: see `Network::NewConnection`. `waits`: number of active waits; must outlive this
  /// object.
  QtConnection(std::function<void()> changed, const int& waits);
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
  void MakeSocket();
  void AwaitAddresses();
  /// Connects to the next address; without one, ends the connection with `error`.
  void TryNext(SocketError error);
  void Fail(SocketError error);
  void Verify();
  void Receive();
  void Send();
  void Report(Change change);
  void End(SocketError error);
  /// Schedules a call of `changed` from the event loop.
  void Announce();

  std::function<void()> changed_;
  const int& waits_;
  QObject context_;  // Cancels the scheduled calls when it is destroyed.
  bool isAnnounced_ = false;
  std::optional<HostResolver> resolver_;
  std::deque<String> addresses_;  // Not tried yet.
  quint16 port_ = 0;
  std::unique_ptr<QSslSocket> socket_;
  bool isReached_ = false;  // One of the addresses accepted the connection.
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
