#include "peers/TlsServer.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/ssl.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vintrace::test {
namespace {

constexpr int Patience = 15;  // Seconds.

}  // namespace

TlsServer::TlsServer(const Certificate& certificate, int newest)
    : context_(SSL_CTX_new(TLS_server_method()), SSL_CTX_free),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  SSL_CTX_use_certificate_file(context_.get(), certificate.c_str(), SSL_FILETYPE_PEM);
  SSL_CTX_use_PrivateKey_file(context_.get(), certificate.c_str(), SSL_FILETYPE_PEM);
  SSL_CTX_set_cipher_list(context_.get(), "ALL:@SECLEVEL=0");
  SSL_CTX_set_min_proto_version(context_.get(), TLS1_VERSION);
  SSL_CTX_set_max_proto_version(context_.get(), newest);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_.Number(), generic, size) != 0 || listen(listener_.Number(), 8) != 0 ||
      getsockname(listener_.Number(), generic, &size) != 0) {
    throw std::runtime_error("no port to listen on");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

TlsServer::~TlsServer() {
  shutdown(listener_.Number(), SHUT_RDWR);
  thread_.join();
}

void TlsServer::Expect(Script script) {
  const std::lock_guard lock(mutex_);
  scripts_.push_back(std::move(script));
}

std::vector<std::string> TlsServer::Requests() {
  std::unique_lock lock(mutex_);
  served_.wait_for(lock, std::chrono::seconds(Patience), [this] { return scripts_.empty(); });
  return std::exchange(requests_, {});
}

void TlsServer::Run() {
  while (true) {
    const Descriptor connection(accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!connection.IsOpen()) return;
    std::unique_lock lock(mutex_);
    const bool isExpected = !scripts_.empty();
    const Script script = isExpected ? scripts_.front() : Script();
    lock.unlock();
    Serve(connection.Number(), script);
    lock.lock();
    if (isExpected) scripts_.pop_front();
    served_.notify_all();
  }
}

void TlsServer::Serve(int connection, const Script& script) {
  const timeval patience{.tv_sec = Patience, .tv_usec = 0};
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
  const linger reset{.l_onoff = script.end == End::Reset, .l_linger = 0};
  setsockopt(connection, SOL_SOCKET, SO_LINGER, &reset, sizeof(reset));
  // Otherwise a reset would discard replies that are waiting to be sent.
  const int now = 1;
  setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &now, sizeof(now));
  char bytes[16384];
  if (!script.shakesHands) {
    // Unread bytes would turn the FIN into a reset.
    recv(connection, bytes, sizeof(bytes), 0);
    return;
  }
  const std::shared_ptr<SSL> tls(SSL_new(context_.get()), SSL_free);
  SSL_set_fd(tls.get(), connection);
  const bool isSecure = SSL_accept(tls.get()) == 1;
  // A connection whose handshake failed counts as a request too.
  const int size = SSL_read(tls.get(), bytes, sizeof(bytes));
  {
    const std::lock_guard lock(mutex_);
    requests_.emplace_back(bytes, std::max(size, 0));
  }
  if (!isSecure) return;
  for (const auto& piece : script.pieces) {
    std::this_thread::sleep_for(script.pause);
    if (!piece.empty()) SSL_write(tls.get(), piece.data(), static_cast<int>(piece.size()));
  }
  if (script.end == End::CloseNotify) SSL_shutdown(tls.get());
}

}  // namespace vintrace::test
