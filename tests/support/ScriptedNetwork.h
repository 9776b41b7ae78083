#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "platform/net/Network.h"

namespace vintrace::test {

/// A network without a wire: what the other sides do is listed beforehand, and what is sent to them
/// is recorded.
class ScriptedNetwork : public Network {
 public:
  /// What the other side of one connection does.
  struct Peer {
    SocketError refuses = SocketError::None;  ///< Instead of taking the connection.
    /// What comes for each piece that is sent to it, in pieces.
    std::vector<std::vector<String>> replies = {};
    /// Whether it ends the connection behind the last of them.
    bool ends = true;
  };

  /// Those that connections are made to, in order; with none left they are refused.
  std::deque<Peer> peers;
  /// "host:port", followed by " tls NAME" for a secure one; what is sent to it; "tls NAME" where it
  /// becomes secure.
  std::vector<String> wire;
  /// Raised while a client waits, a tick at a time.
  std::function<void()> whileWaiting;
  std::int64_t ticks = 0;
  std::function<String(std::string_view)> md5 = [](std::string_view) { return String(16, '\0'); };

  /// Calls what connections have asked for until nothing happens any more.
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
