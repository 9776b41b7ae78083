#pragma once

#include <sys/un.h>

#include <chrono>
#include <optional>

#include "platform/String.h"

namespace vintrace::posix {

/// What came of an attempt to hand a start over to the running program. Only `Taken` says that the
/// documents are the other's; with each of the rest they are not, and never will be (but on macOS,
/// where an answer that comes too late can't be kept away, after `Silent`).
enum class Answer {
  Taken,
  Nobody,      ///< Nothing listens at the address.
  Silent,      ///< Somebody listens, and doesn't answer.
  Closed,      ///< The other one hung up; it may be quitting.
  Impossible,  ///< The other one is not to be spoken to, or the system refuses.
};

/// Sends `message` to the program at `address` and waits for the answer, for `silence` in all.
/// Without a message, which is one that is too long, a program that listens is `Impossible`.
Answer HandOver(const sockaddr_un& address, const std::optional<String>& message,
                std::chrono::milliseconds silence);

/// True when nothing listens at `address`.
bool NobodyListens(const sockaddr_un& address);

}  // namespace vintrace::posix
