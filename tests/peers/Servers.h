#pragma once

#include <QProcess>
#include <cstdint>
#include <filesystem>
#include <string>

#include "peers/Certificates.h"

namespace vintrace::test {

/// A server of the system's on this machine, which runs as long as the object lives and has its
/// files in a folder that other users may read and write too: some servers give up the superuser's
/// rights. `user:secret` is known there.
class Server {
 public:
  /// `name`: "nginx", or "squid", which asks for a Digest. Raises when it doesn't start.
  Server(const std::filesystem::path& folder, const Certificate& certificate,
         const std::string& name = "nginx");
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

  std::uint16_t Port() const { return port_; }
  std::string Tls13(const std::string& path) const {
    return "https://localhost:" + std::to_string(port_) + path;
  }

 private:
  std::uint16_t port_ = 0;
  QProcess process_;
};

}  // namespace vintrace::test
