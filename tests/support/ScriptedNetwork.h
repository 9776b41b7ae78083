#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "platform/net/Network.h"

namespace vintrace::test {

/// A simulated network: the peers follow a script, and everything sent to them is recorded.
class ScriptedNetwork : public Network {
 public:
  /// The behaviour of the peer of one connection.
  struct Peer {
    SocketError refuses = SocketError::None;  ///< If set, the connection fails with it.
    /// The reply to each write, in pieces.
    std::vector<std::vector<String>> replies = {};
    /// Whether it ends the connection after the last reply.
    bool ends = true;
  };

  /// The peers of the coming connections, in order. Further connections are refused.
  std::deque<Peer> peers;
  /// In order: "HOST:PORT" for each connection, with " tls NAME" if it is secure, the bytes of each
  /// write, and "tls NAME" when a connection becomes secure.
  std::vector<String> wire;
  /// Called at each tick of a wait.
  std::function<void()> whileWaiting;
  std::int64_t ticks = 0;
  std::function<String(std::string_view)> md5 = [](std::string_view) { return String(16, '\0'); };

  /// Notifies the connections of their changes until none has any left.
  void RunEvents();

  std::unique_ptr<Connection> NewConnection(std::function<void()> changed) override;
  void WaitUntil(const std::function<bool()>& over) override;
  void DoEvents() override {}
  std::int64_t Ticks() override { return ticks; }
  int InRange(int least, int most) override { return least + random_++ % (most - least + 1); }
  String MD5(std::string_view text) override { return md5(text); }

 private:
  class ScriptedConnection;

  std::vector<ScriptedConnection*> connections_;
  int random_ = 0;
};

}  // namespace vintrace::test
