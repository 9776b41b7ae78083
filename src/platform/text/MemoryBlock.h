#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/text/String.h"

namespace vintrace {

/// Bytes in memory that grow at their end.
class MemoryBlock {
 public:
  /// In constant time.
  std::size_t Size() const { return bytes_.size(); }

  /// In time that grows with `bytes` alone, taken over many calls.
  void Append(std::string_view bytes) { bytes_ += bytes; }

  /// Makes room for `count` bytes in all; where the system gives memory as it is used, they take
  /// none before they come. Raises `std::bad_alloc` if there is no such room.
  void Expect(std::size_t count) { bytes_.reserve(count); }

  /// The first `count` bytes, or all when there are fewer. The block is empty then.
  String Take(std::size_t count) {
    String bytes = std::exchange(bytes_, {});
    if (bytes.size() > count) bytes.resize(count);
    return bytes;
  }

 private:
  String bytes_;
};

}  // namespace vintrace
