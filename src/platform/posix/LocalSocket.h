#pragma once

#include <sys/socket.h>
#include <sys/types.h>
#include <sys/un.h>

#include <optional>
#include <string_view>

#include "platform/String.h"
#include "platform/posix/Descriptor.h"

// Stream sockets between the processes of this machine, the differences of the systems evened out.
// None of them blocks, goes to a program that this one starts, or raises a signal.

namespace vintrace::posix {

/// The address of the socket at `path`; nothing when the path is too long for one.
std::optional<sockaddr_un> SocketAddress(const String& path);

/// A new socket; none, with `errno`, when the system refuses.
Descriptor NewSocket();
/// The next connection to `listener`; none when there is none.
Descriptor AcceptFrom(int listener);

/// As `connect` and `bind`, of an address made by `SocketAddress`.
bool ConnectTo(int socket, const sockaddr_un& address);
bool BindTo(int socket, const sockaddr_un& address);

/// True when the other end belongs to the user that this process acts for.
bool PeerIsThisUser(int socket);

/// As `send` and `recv`, interruptions aside.
ssize_t Send(int socket, std::string_view bytes);
ssize_t Receive(int socket, char* into, std::size_t count);

/// From now on, what the other end sends fails there, if the system can do so without losing what
/// it has sent before.
void RefuseMore(int socket);

}  // namespace vintrace::posix
