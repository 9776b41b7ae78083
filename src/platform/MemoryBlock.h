#pragma once

#include <cstddef>
#include <string_view>

#include "platform/String.h"

namespace vintrace {

/// Bytes in memory that grow at their end.
class MemoryBlock {
 public:
  /// In constant time.
  std::size_t Size() const { return bytes_.size(); }

  /// In time that grows with `bytes` alone, taken over many calls.
  void Append(std::string_view bytes) { bytes_ += bytes; }

  /// The first `count` bytes; all when there are fewer.
  String StringValue(std::size_t count) const { return bytes_.substr(0, count); }

 private:
  String bytes_;
};

}  // namespace vintrace
