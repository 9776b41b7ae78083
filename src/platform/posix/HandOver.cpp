#include "platform/posix/HandOver.h"

#include <poll.h>

#include <cerrno>
#include <string_view>

#include "platform/posix/Deadline.h"
#include "platform/posix/LocalSocket.h"
#include "platform/posix/StartMessage.h"

namespace vintrace::posix {
namespace {

/// False when the deadline has passed before `socket` is ready for `events`.
bool Await(int socket, short events, const Deadline& deadline) {
  pollfd watched{socket, events, 0};
  for (;;) {
    const int ready = poll(&watched, 1, deadline.MillisecondsLeft());
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

/// Nothing when `socket` is connected.
std::optional<Answer> Connect(int socket, const sockaddr_un& address, const Deadline& deadline) {
  while (!ConnectTo(socket, address)) {
    if (errno == ENOENT || errno == ECONNREFUSED) return Answer::Nobody;
    if (errno != EAGAIN) return Answer::Impossible;
    // So many wait there already that there is no room for one more, nor anything to wait with.
    if (deadline.HasPassed()) return Answer::Silent;
    Pause();
  }
  return std::nullopt;
}

/// Nothing when all of `message` is on its way.
std::optional<Answer> SendAll(int socket, std::string_view message, const Deadline& deadline) {
  while (!message.empty()) {
    if (!Await(socket, POLLOUT, deadline)) return Answer::Silent;
    const ssize_t sent = Send(socket, message);
    if (sent >= 0) {
      message.remove_prefix(static_cast<std::size_t>(sent));
    } else if (errno != EAGAIN) {
      return Answer::Closed;
    }
  }
  shutdown(socket, SHUT_WR);
  return std::nullopt;
}

Answer AwaitAnswer(int socket, const Deadline& deadline) {
  const bool heard = Await(socket, POLLIN, deadline);
  // An answer that has been sent is read below; one that hasn't can't be sent any more, so that the
  // other one, should it wake up, knows that it came too late.
  if (!heard) RefuseMore(socket);
  char answer = 0;
  if (Receive(socket, &answer, 1) == 1 && answer == TakenAnswer.front()) return Answer::Taken;
  return heard ? Answer::Closed : Answer::Silent;
}

}  // namespace

Answer HandOver(const sockaddr_un& address, const std::optional<String>& message,
                std::chrono::milliseconds silence) {
  const Deadline deadline(silence);
  const Descriptor socket = NewSocket();
  if (!socket) return Answer::Impossible;
  if (const auto failed = Connect(socket.Number(), address, deadline)) return *failed;
  if (!message || !PeerIsThisUser(socket.Number())) return Answer::Impossible;
  if (const auto failed = SendAll(socket.Number(), *message, deadline)) return *failed;
  return AwaitAnswer(socket.Number(), deadline);
}

bool NobodyListens(const sockaddr_un& address) {
  const Descriptor socket = NewSocket();
  return socket && Connect(socket.Number(), address, Deadline({})) == Answer::Nobody;
}

}  // namespace vintrace::posix
