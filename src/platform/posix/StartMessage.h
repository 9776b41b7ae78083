#pragma once

#include <optional>
#include <string_view>

#include "platform/InstanceChannel.h"

// A start request as bytes: a mark, the size of what follows, the number of documents, and the
// texts, each behind its size. Sizes have four bytes, the highest first. The sender closes its
// direction behind it.

namespace vintrace::posix {

/// What the running program answers once the documents are its own.
inline constexpr std::string_view TakenAnswer = "T";

/// The message of `request`; nothing when it would pass the bounds of one.
std::optional<String> EncodeStartMessage(const StartRequest& request);

/// False when `bytes` are the beginning of no message, whatever follows them. The bytes of a
/// message are bounded by that, too.
bool MayBecomeStartMessage(std::string_view bytes);

/// The request of a message that is whole; nothing for any other bytes.
std::optional<StartRequest> DecodeStartMessage(std::string_view bytes);

}  // namespace vintrace::posix
