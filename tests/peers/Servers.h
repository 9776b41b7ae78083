#pragma once

#include <QProcess>
#include <cstdint>
#include <filesystem>
#include <string>

#include "peers/Certificates.h"

namespace vintrace::test {

/// A port of this machine's that nobody listens on now.
std::uint16_t FreePort();

/// A server of the system's, which runs as long as the object lives.
class Server {
 public:
  /// Starts `program` and waits until it listens on `port`. Raises when it doesn't.
  Server(const QString& program, const QStringList& arguments, std::uint16_t port);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

 private:
  QProcess process_;
};

/// Where a server keeps what it needs, which other users may read and write too: some servers give
/// up the superuser's rights. `user:secret` is known there.
class ServerFolder {
 public:
  ServerFolder(const std::filesystem::path& folder, const std::string& name);

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path File(const std::string& name, const std::string& content) const;

 private:
  std::filesystem::path path_;
};

/// nginx, with the same pages on TLS 1.2, on TLS 1.3 and in the clear.
class Nginx {
 public:
  Nginx(const std::filesystem::path& folder, const Certificate& certificate);

  std::string Tls12(const std::string& path) const { return URL("https", tls12_, path); }
  std::string Tls13(const std::string& path) const { return URL("https", tls13_, path); }
  std::string Plain(const std::string& path) const { return URL("http", plain_, path); }

 private:
  static std::string URL(const std::string& scheme, std::uint16_t port, const std::string& path) {
    return scheme + "://localhost:" + std::to_string(port) + path;
  }
  std::string Configuration(const Certificate& certificate) const;

  ServerFolder folder_;
  std::uint16_t tls12_ = FreePort();
  std::uint16_t tls13_ = FreePort();
  std::uint16_t plain_ = FreePort();
  Server server_;
};

/// Apache, with pages behind both kinds of authentication.
class Apache {
 public:
  Apache(const std::filesystem::path& folder, const Certificate& certificate);

  std::string URL(const std::string& path) const {
    return "https://localhost:" + std::to_string(port_) + path;
  }

 private:
  std::string Configuration(const Certificate& certificate) const;

  ServerFolder folder_;
  std::uint16_t port_ = FreePort();
  Server server_;
};

/// squid, which may demand a password of its users.
class Squid {
 public:
  enum class Demand { Nothing, Basic, Digest, TheImpossible };

  Squid(const std::filesystem::path& folder, const std::string& name, Demand demand);

  std::uint16_t Port() const { return port_; }

 private:
  std::string Configuration(Demand demand) const;

  ServerFolder folder_;
  std::uint16_t port_ = FreePort();
  Server server_;
};

}  // namespace vintrace::test
