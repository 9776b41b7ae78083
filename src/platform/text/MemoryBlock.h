#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/text/String.h"

namespace vintrace {

/// A buffer of bytes that grows at its end.
class MemoryBlock {
 public:
  /// Takes constant time.
  std::size_t Size() const { return bytes_.size(); }

  /// Takes amortized time proportional to the length of `bytes`.
  void Append(std::string_view bytes) { bytes_ += bytes; }

  /// Reserves room for `count` bytes in all. If the system commits memory on first use, unused room
  /// takes none. Raises `std::bad_alloc` if there isn't enough.
  void Expect(std::size_t count) { bytes_.reserve(count); }

  /// Returns the first `count` bytes, or all if there are fewer, and empties the block.
  String Take(std::size_t count) {
    String bytes = std::exchange(bytes_, {});
    if (bytes.size() > count) bytes.resize(count);
    return bytes;
  }

 private:
  String bytes_;
};

}  // namespace vintrace
