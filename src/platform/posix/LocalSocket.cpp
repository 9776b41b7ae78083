#include "platform/posix/LocalSocket.h"

#include <fcntl.h>

#include <cerrno>

namespace vintrace::posix {
namespace {

/// What `call` returns when no signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

#ifdef __linux__

constexpr int SendFlags = MSG_NOSIGNAL;

int OpenSocket() { return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }

int AcceptSocket(int listener) {
  return accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
}

std::optional<uid_t> PeerUser(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return std::nullopt;
  return peer.uid;
}

constexpr bool RefusingKeepsWhatCame = true;

#else

constexpr int SendFlags = 0;

int Prepared(int socket) {
  if (socket < 0) return socket;
  fcntl(socket, F_SETFD, FD_CLOEXEC);
  fcntl(socket, F_SETFL, O_NONBLOCK);
  const int on = 1;
  setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
  return socket;
}

int OpenSocket() { return Prepared(socket(AF_UNIX, SOCK_STREAM, 0)); }

int AcceptSocket(int listener) { return Prepared(accept(listener, nullptr, nullptr)); }

std::optional<uid_t> PeerUser(int socket) {
  uid_t user{};
  gid_t group{};
  if (getpeereid(socket, &user, &group) != 0) return std::nullopt;
  return user;
}

constexpr bool RefusingKeepsWhatCame = false;

#endif

const sockaddr* Generic(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

}  // namespace

std::optional<sockaddr_un> SocketAddress(const String& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return std::nullopt;
  path.copy(address.sun_path, path.size());
  return address;
}

Descriptor NewSocket() { return Descriptor(OpenSocket()); }

Descriptor AcceptFrom(int listener) {
  return Descriptor(Uninterrupted([&] { return AcceptSocket(listener); }));
}

bool ConnectTo(int socket, const sockaddr_un& address) {
  return Uninterrupted([&] { return connect(socket, Generic(address), sizeof address); }) == 0;
}

bool BindTo(int socket, const sockaddr_un& address) {
  return bind(socket, Generic(address), sizeof address) == 0;
}

bool PeerIsThisUser(int socket) { return PeerUser(socket) == geteuid(); }

ssize_t Send(int socket, std::string_view bytes) {
  return Uninterrupted([&] { return send(socket, bytes.data(), bytes.size(), SendFlags); });
}

ssize_t Receive(int socket, char* into, std::size_t count) {
  return Uninterrupted([&] { return recv(socket, into, count, 0); });
}

void RefuseMore(int socket) {
  if (RefusingKeepsWhatCame) shutdown(socket, SHUT_RD);
}

}  // namespace vintrace::posix
