#include "peers/TlsServer.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string_view>
#include <utility>

#include "platform/posix/Descriptor.h"

namespace vintrace::test {
namespace {

using posix::Descriptor;

struct FreeTLS {
  void operator()(SSL* tls) const { SSL_free(tls); }
};

void SetOption(int descriptor, int level, int option, int value) {
  setsockopt(descriptor, level, option, &value, sizeof(value));
}

void BreakOff(int connection) {
  const linger atOnce{.l_onoff = 1, .l_linger = 0};
  setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
}

/// Waits until the other side has closed the connection, or for long.
void AwaitItsEnd(int connection) {
  constexpr int Patience = 15'000;
  char bytes[4096];
  pollfd watched{.fd = connection, .events = POLLIN, .revents = 0};
  while (poll(&watched, 1, Patience) > 0 && recv(connection, bytes, sizeof(bytes), 0) > 0) {
  }
}

}  // namespace

struct TlsServer::Context {
  SSL_CTX* context = SSL_CTX_new(TLS_server_method());
  Context() = default;
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;
  ~Context() { SSL_CTX_free(context); }
};

TlsServer::TlsServer(const Certificate& certificate)
    : context_(std::make_unique<Context>()),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  SSL_CTX_use_certificate_file(context_->context, certificate.certificate.c_str(),
                               SSL_FILETYPE_PEM);
  SSL_CTX_use_PrivateKey_file(context_->context, certificate.key.c_str(), SSL_FILETYPE_PEM);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, generic, size) != 0 || listen(listener_, 8) != 0 ||
      getsockname(listener_, generic, &size) != 0) {
    throw std::runtime_error("no port to listen on");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

TlsServer::~TlsServer() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void TlsServer::SpeakOldTLS() {
  SSL_CTX_set_cipher_list(context_->context, "ALL:@SECLEVEL=0");
  SSL_CTX_set_min_proto_version(context_->context, TLS1_VERSION);
  SSL_CTX_set_max_proto_version(context_->context, TLS1_1_VERSION);
}

void TlsServer::Expect(Script script) {
  const std::lock_guard lock(mutex_);
  scripts_.push_back(std::move(script));
}

std::vector<std::string> TlsServer::Requests() {
  const std::lock_guard lock(mutex_);
  return std::exchange(requests_, {});
}

std::optional<std::string> TlsServer::AwaitRequest() {
  constexpr int Turns = 15'000;
  for (int turn = 0; turn < Turns; ++turn) {
    if (auto requests = Requests(); !requests.empty()) return requests.front();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return std::nullopt;
}

void TlsServer::Run() {
  while (true) {
    const Descriptor connection(accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC));
    if (!connection) return;
    Script script;
    {
      const std::lock_guard lock(mutex_);
      if (!scripts_.empty()) {
        script = std::move(scripts_.front());
        scripts_.pop_front();
      }
    }
    SetOption(connection.Number(), IPPROTO_TCP, TCP_NODELAY, 1);
    Serve(connection.Number(), script);
  }
}

void TlsServer::Serve(int connection, const Script& script) {
  if (script.end == End::Reset) BreakOff(connection);
  if (script.moment == Moment::BeforeHandshake) {
    if (script.end == End::Never) AwaitItsEnd(connection);
    return;
  }
  if (script.moment == Moment::InHandshake) {
    char hello[4096];  // Read whole, as bytes that are left over turn the end into a reset.
    recv(connection, hello, sizeof(hello), 0);
    return;
  }
  const std::unique_ptr<SSL, FreeTLS> tls(SSL_new(context_->context));
  SSL_set_fd(tls.get(), connection);
  const bool isSecure = SSL_accept(tls.get()) == 1;
  if (isSecure && script.moment == Moment::AfterReply) {
    auto request = ReadRequest(tls.get());
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(std::move(request));
    }
    for (const auto& piece : script.pieces) {
      std::this_thread::sleep_for(script.pause);
      if (!piece.empty()) SSL_write(tls.get(), piece.data(), static_cast<int>(piece.size()));
    }
  } else {
    // Whatever has come is a request, even if no handshake was finished.
    char bytes[4096];
    const int size = isSecure ? 0 : SSL_read(tls.get(), bytes, sizeof(bytes));
    const std::lock_guard lock(mutex_);
    requests_.emplace_back(bytes, size > 0 ? static_cast<std::size_t>(size) : 0);
  }
  if (!isSecure || script.end == End::Fin || script.end == End::Reset) return;
  if (script.end != End::Never) SSL_shutdown(tls.get());
  if (script.end != End::CloseNotify) AwaitItsEnd(connection);
}

std::string TlsServer::ReadRequest(void* tls) {
  constexpr std::string_view LengthName = "Content-length: ";
  std::string request;
  std::size_t whole = std::string::npos;
  char bytes[16384];
  while (request.size() < whole) {
    const int size = SSL_read(static_cast<SSL*>(tls), bytes, sizeof(bytes));
    if (size <= 0) break;
    request.append(bytes, static_cast<std::size_t>(size));
    const auto end = request.find("\r\n\r\n");
    if (end == std::string::npos) continue;
    const auto length = request.find(LengthName);
    whole =
        end + 4 +
        (length < end ? std::stoul(request.substr(length + LengthName.size())) : std::size_t{0});
  }
  return request;
}

}  // namespace vintrace::test
