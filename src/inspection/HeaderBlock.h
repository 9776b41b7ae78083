#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/text/String.h"

namespace vintrace::inspection {

struct VersionRow;

/// The byte order of a document.
enum class DocumentByteOrder { Little, Big };

/// The first 48 bytes of a document, or fewer if the file is shorter. Byte 25, counted from 1, is
/// the byte-order flag: 2 is big-endian, anything else little-endian. Bytes 30 to 33 are the 32-bit
/// major version, of which only the low-order byte is used. Byte 34 distinguishes CS5.5 from CS5.
/// No other byte is examined, the signature included.
class HeaderBlock {
 public:
  static constexpr std::size_t Size = 48;

  explicit HeaderBlock(String bytes) : bytes_(std::move(bytes)) {}

  DocumentByteOrder ByteOrder() const;
  /// One byte; empty if the file ends before it.
  std::string_view VersionByte() const;
  /// The document's row of the release table; nil if it has none.
  const VersionRow* Row() const;

 private:
  String bytes_;
};

}  // namespace vintrace::inspection
