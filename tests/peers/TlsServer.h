#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "peers/Certificates.h"

namespace vintrace::test {

/// A TLS server that does as it is told, byte for byte, in a thread of its own.
class TlsServer {
 public:
  /// How a connection ends.
  enum class End {
    CloseNotify,  ///< TLS says so, and then TCP.
    HeldOpen,     ///< TLS says so, and TCP stays open until the client closes it.
    Fin,          ///< TCP alone says so.
    Reset,        ///< TCP breaks off.
    Never         ///< Nothing is said any more until the client closes it.
  };
  /// When it ends.
  enum class Moment { BeforeHandshake, InHandshake, BeforeRequest, AfterReply };

  /// What is done with one connection.
  struct Script {
    std::vector<std::string> pieces = {};  ///< Of the reply, each sent on its own.
    std::chrono::milliseconds pause{0};    ///< Before each of them.
    End end = End::CloseNotify;
    Moment moment = Moment::AfterReply;
  };

  explicit TlsServer(const Certificate& certificate);
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer();

  /// No TLS newer than 1.1.
  void SpeakOldTLS();

  std::uint16_t Port() const { return port_; }
  std::string URL(const std::string& host = "localhost") const {
    return "https://" + host + ':' + std::to_string(port_) + "/path";
  }

  /// Has the next connection served that way.
  void Expect(Script script);
  /// The requests that have come, one a connection that came as far as to a handshake.
  std::vector<std::string> Requests();
  /// Waits for the first of them; empty for a handshake that failed, nil when none comes.
  std::optional<std::string> AwaitRequest();

 private:
  struct Context;

  void Run();
  void Serve(int connection, const Script& script);
  std::string ReadRequest(void* tls);

  std::unique_ptr<Context> context_;
  int listener_ = -1;
  std::uint16_t port_ = 0;
  std::mutex mutex_;
  std::deque<Script> scripts_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

}  // namespace vintrace::test
