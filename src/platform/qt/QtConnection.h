#pragma once

#include <QSslSocket>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/NameLookup.h"
#include "platform/Network.h"

namespace vintrace::qt {

/// A connection on the toolkit's sockets.
class QtConnection : public Connection {
 public:
  /// `changed`: as `Network` says. `waits`: how many wait now; lives longer.
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
  /// Connects to the next address; with none left, the connection has ended with that error.
  void TryNext(SocketError error);
  void Fail(SocketError error);
  void Verify();
  void Receive();
  void Send();
  void Tell(Change change);
  void End(SocketError error);
  /// Has `changed` called from the event loop.
  void Announce();

  std::function<void()> changed_;
  const int& waits_;
  QObject context_;  // What the event loop still has to call goes with it.
  bool isAnnounced_ = false;
  std::optional<NameLookup> lookup_;
  std::deque<String> addresses_;  // Those that haven't been tried.
  quint16 port_ = 0;
  std::unique_ptr<QSslSocket> socket_;
  bool isReached_ = false;  // One of the addresses took the connection.
  std::optional<String> tlsName_;
  std::deque<Change> changes_;
  String received_;
  String toSend_;
  std::size_t sent_ = 0;  // Of that, so much has left.
  bool isOpen_ = false;   // The caller may send.
  bool isSending_ = false;
  bool hasEnded_ = false;
  SocketError error_ = SocketError::None;
};

}  // namespace vintrace::qt
