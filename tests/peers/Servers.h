#pragma once

#include <QProcess>
#include <cstdint>
#include <filesystem>
#include <string>

#include "peers/Certificates.h"

namespace vintrace::test {

/// An installed server, which runs on a free local port while the object lives. Its folder under
/// `folder` is open to all users, since servers started by root may drop their privileges. It
/// accepts the user `user` with the password `secret`.
class Server {
 public:
  /// `name`: "nginx", or "squid" with Digest. Raises `std::runtime_error` if it does not start.
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
