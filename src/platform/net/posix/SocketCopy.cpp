#include "platform/net/SocketCopy.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace vintrace {

SocketCopy::SocketCopy(std::intptr_t descriptor)
    : descriptor_(fcntl(static_cast<int>(descriptor), F_DUPFD_CLOEXEC, 0)) {}

SocketCopy::~SocketCopy() {
  if (descriptor_ >= 0) close(descriptor_);
}

String SocketCopy::Received() const {
  constexpr std::size_t Most = 16 << 20;
  std::array<char, 65536> bytes;
  String received;
  while (received.size() < Most) {
    const auto count = recv(descriptor_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count <= 0) break;
    received.append(bytes.data(), static_cast<std::size_t>(count));
  }
  return received;
}

}  // namespace vintrace
