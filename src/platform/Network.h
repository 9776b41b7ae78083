#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/String.h"

namespace vintrace {

/// Why a connection couldn't be made, or that it has ended.
enum class SocketError {
  None = 0,
  Ended = 102,         ///< The other side has ended the connection, in whatever way.
  NameNotFound = 103,  ///< There is no such host.
  Refused = 104,       ///< The host takes no connection there.
  Unreachable = 105,   ///< No way leads to the host, or it stays silent.
  InvalidPort = 107,   ///< Ports are 1 to 65535.
  NotTrusted = 110,    ///< The host couldn't show that it is the one that was asked for.
  NotSecure = 111,     ///< There is no secure connection with it.
  Other = 199
};

/// One connection, as a network makes it. Nothing waits, and nothing is told but by `Next`.
class Connection {
 public:
  enum class Change { Connected, DataAvailable, SendComplete, Ended };

  virtual ~Connection() = default;

  /// Begins to connect to a host, by its name or address, and, if `tlsName` isn't nil, to secure
  /// that: the host has to show a certificate for that name which the system trusts. What comes of
  /// it is `Connected`, when nothing of the caller's has been sent yet, or `Ended`.
  virtual void Open(const String& host, std::int64_t port,
                    const std::optional<String>& tlsName) = 0;
  /// Secures an open, plain connection as `Open` does. Bytes that have come already end it.
  virtual void StartTLS(const String& tlsName) = 0;

  /// Queues bytes.
  virtual void Write(std::string_view bytes) = 0;
  /// Drops what is queued, but for what the system has taken over already.
  virtual void Purge() = 0;
  /// What has come since the last call.
  virtual String Take() = 0;

  /// The next change, in order; nil when there is none now. `Ended` comes once, and is the last.
  virtual std::optional<Change> Next() = 0;
  /// Why it has ended.
  virtual SocketError Error() const = 0;
};

/// What a network client asks of its surroundings.
class Network {
 public:
  virtual ~Network() = default;

  /// A connection, closed as yet. `changed` is called from the event loop when `Next` has something
  /// to tell, but not while somebody waits; it may destroy the connection, and raises nothing.
  virtual std::unique_ptr<Connection> NewConnection(std::function<void()> changed) = 0;

  /// Lets connections go on until `over()` is true, or the program is to end. That is asked at
  /// once, whenever something has changed, and every few milliseconds. Windows are repainted
  /// meanwhile, but nothing that a user or another program wants is handled before the end.
  virtual void WaitUntil(const std::function<bool()>& over) = 0;
  /// Handles all that waits in the event loop, what a user does too.
  virtual void DoEvents() = 0;

  /// The time since some moment, in sixtieths of a second. It never goes back.
  virtual std::int64_t Ticks() = 0;
  /// A random number from `least` to `most`, both included, that no one can foretell.
  virtual int InRange(int least, int most) = 0;
  /// The 16 bytes of the MD5 digest (RFC 1321) of `text`.
  virtual String MD5(std::string_view text) = 0;
};

}  // namespace vintrace
