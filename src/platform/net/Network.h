#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

/// The reason why a connection ended or couldn't be made.
enum class SocketError {
  None = 0,
  Ended = 102,         ///< The peer ended the connection, in whatever way.
  NameNotFound = 103,  ///< There is no such host.
  Refused = 104,       ///< The host refuses connections on that port.
  Unreachable = 105,   ///< There is no route to the host, or it doesn't answer.
  InvalidPort = 107,   ///< Ports are 1 to 65535.
  NotTrusted = 110,    ///< The host has no certificate for the name that the system trusts.
  NotSecure = 111,     ///< The TLS handshake failed.
  Other = 199
};

/// One connection of a `Network`. No operation blocks, and changes are reported by `Next` alone.
class Connection {
 public:
  enum class Change { Connected, DataAvailable, SendComplete, Ended };

  virtual ~Connection() = default;

  /// Starts to connect to a host, by name or address. With a `tlsName`, the connection is secured
  /// too: the host must show a certificate for that name which the system trusts. The next change
  /// is `Connected`, before which no queued byte is sent, or `Ended`.
  virtual void Open(const String& host, std::int64_t port,
                    const std::optional<String>& tlsName) = 0;
  /// Secures an open plain connection, with changes like those of `Open`. Bytes received before the
  /// handshake end the connection.
  virtual void StartTLS(const String& tlsName) = 0;

  /// Queues bytes to be sent.
  virtual void Write(std::string_view bytes) = 0;
  /// Drops queued bytes that the system hasn't accepted yet.
  virtual void Purge() = 0;
  /// The bytes received since the last call.
  virtual String Take() = 0;

  /// The next change, in order; nil if there is none now. `Ended` comes once, and last.
  virtual std::optional<Change> Next() = 0;
  /// The reason for `Ended`.
  virtual SocketError Error() const = 0;
};

/// The services that a network client needs from its surroundings.
class Network {
 public:
  virtual ~Network() = default;

  /// A new connection, not open yet. `changed` is called from the event loop when `Next` has a
  /// change to report, except while `WaitUntil` runs the loop. It may destroy the connection, and
  /// must not throw.
  virtual std::unique_ptr<Connection> NewConnection(std::function<void()> changed) = 0;

  /// Runs the event loop until `over()` is true or the program quits. `over` is called at once,
  /// after every change, and every few milliseconds. Windows are repainted meanwhile, but no input
  /// of the user is handled.
  virtual void WaitUntil(const std::function<bool()>& over) = 0;
  /// Handles all pending events, input of the user included.
  virtual void DoEvents() = 0;

  /// A monotonic time in sixtieths of a second.
  virtual std::int64_t Ticks() = 0;
  /// A cryptographically secure random number from `least` to `most`, both included.
  virtual int InRange(int least, int most) = 0;
  /// The 16 bytes of the MD5 digest (RFC 1321) of `text`.
  virtual String MD5(std::string_view text) = 0;
};

/// The functions that a network calls around and during waits.
struct WaitHooks {
  /// Called with true before a wait, and with false after it.
  std::function<void(bool)> waits = [](bool) {};
  /// True once the program quits, which ends waits.
  std::function<bool()> quits = [] { return false; };
};

/// Makes a network. Raises `RuntimeException` if a bundled part is missing.
using NetworkMaker = std::unique_ptr<Network> (*)(const WaitHooks& hooks);

}  // namespace vintrace
