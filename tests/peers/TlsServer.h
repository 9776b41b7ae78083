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

/// A TLS server that follows scripts, in its own thread.
class TlsServer {
 public:
  /// How a connection ends.
  enum class End {
    CloseNotify,  ///< By close_notify, and then FIN.
    Fin,          ///< By FIN alone.
    Reset         ///< By RST.
  };

  /// How one connection is served.
  struct Script {
    std::vector<std::string> pieces = {};  ///< The reply, sent piece by piece.
    std::chrono::milliseconds pause{0};    ///< Before each piece.
    End end = End::CloseNotify;
    bool shakesHands = true;  ///< If false, ends before the TLS handshake.
  };

  /// `newest`: the highest version, such as TLS1_2_VERSION; 0: the highest that OpenSSL supports.
  explicit TlsServer(const Certificate& certificate, int newest = 0);
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer();

  std::uint16_t Port() const { return port_; }
  std::string URL(const std::string& host = "localhost") const {
    return "https://" + host + ':' + std::to_string(port_) + "/path";
  }

  /// Queues a script. Each connection takes the next one, or the default if there is none.
  void Expect(Script script);
  /// Waits, for at most 15 seconds, until all scripts are done. Returns the requests since the last
  /// call: one for each connection that got as far as the handshake, empty if that failed.
  std::vector<std::string> Requests();

 private:
  void Run();
  void Serve(int connection, const Script& script);

  std::shared_ptr<SSL_CTX> context_;
  Descriptor listener_;
  std::uint16_t port_ = 0;
  std::mutex mutex_;
  std::condition_variable served_;
  std::deque<Script> scripts_;  // The first may be in use.
  std::vector<std::string> requests_;
  std::thread thread_;
};

}  // namespace vintrace::test
