#pragma once

#include <openssl/types.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "peers/Certificates.h"
#include "platform/files/Descriptor.h"

namespace vintrace::test {

/// A TLS server that does as it is told, byte for byte, in a thread of its own.
class TlsServer {
 public:
  /// How a connection ends.
  enum class End {
    CloseNotify,  ///< TLS says so, and then TCP.
    Fin,          ///< TCP alone says so.
    Reset         ///< TCP breaks off.
  };

  /// What is done with one connection.
  struct Script {
    std::vector<std::string> pieces = {};  ///< Of the reply, each sent on its own.
    std::chrono::milliseconds pause{0};    ///< Before each of them.
    End end = End::CloseNotify;
    bool shakesHands = true;  ///< If not, it ends in the handshake.
  };

  /// `newest`: the newest TLS that it speaks; 0: the newest there is.
  explicit TlsServer(const Certificate& certificate, int newest = 0);
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer();

  std::uint16_t Port() const { return port_; }
  std::string URL(const std::string& host = "localhost") const {
    return "https://" + host + ':' + std::to_string(port_) + "/path";
  }

  /// Has the next connection served that way.
  void Expect(Script script);
  /// Waits until all expected connections have been served. The requests that have come on these
  /// and others since the last call, one a connection that came as far as to a handshake; empty
  /// for a handshake that failed.
  std::vector<std::string> Requests();

 private:
  void Run();
  void Serve(int connection, const Script& script);

  std::shared_ptr<SSL_CTX> context_;
  Descriptor listener_;
  std::uint16_t port_ = 0;
  std::mutex mutex_;
  std::condition_variable served_;
  std::deque<Script> scripts_;  // The first one's connection may be served now.
  std::vector<std::string> requests_;
  std::thread thread_;
};

}  // namespace vintrace::test
