#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/text/String.h"

namespace vintrace::inspection {

struct VersionRow;

/// The order of a document's bytes.
enum class DocumentByteOrder { Little, Big };

/// The first bytes of a document: 48, or fewer if the file is shorter. The format has a byte-order
/// flag at byte 25, counted from 1 (2: big-endian, anything else: little-endian), and the 32-bit
/// major version at bytes 30 to 33, of which only the low-order byte counts. The byte behind it,
/// 34, tells CS5.5 from CS5. Nothing else is looked at, no signature either.
class HeaderBlock {
 public:
  static constexpr std::size_t Size = 48;

  explicit HeaderBlock(String bytes) : bytes_(std::move(bytes)) {}

  DocumentByteOrder ByteOrder() const;
  /// One byte, or none when the file ends before it.
  std::string_view VersionByte() const;
  /// The row of the release table; nil for a release that it doesn't hold.
  const VersionRow* Row() const;

 private:
  String bytes_;
};

}  // namespace vintrace::inspection
