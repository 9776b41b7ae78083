#pragma once

#include <cstdint>

#include "platform/text/String.h"

namespace vintrace {

/// A copy of the descriptor of a connected socket. Received bytes can still be read from it after
/// the original was closed. The connection stays open until both are closed.
class SocketCopy {
 public:
  /// If `descriptor` can't be copied, nothing will be received.
  explicit SocketCopy(std::intptr_t descriptor);
  SocketCopy(const SocketCopy&) = delete;
  SocketCopy& operator=(const SocketCopy&) = delete;
  ~SocketCopy();

  /// The received bytes that haven't been read yet, without waiting for more. At most 16 MB.
  String Received() const;

 private:
  const int descriptor_;
};

}  // namespace vintrace
