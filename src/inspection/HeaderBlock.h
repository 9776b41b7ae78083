#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include "inspection/InspectionReport.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

struct VersionRow;

/// The first 48 bytes of a document, or fewer if the file is shorter. Byte 25, counted from 1, is
/// the byte-order flag: 2 is big-endian, anything else little-endian. Bytes 30 to 33 are the 32-bit
/// major version, and bytes 34 to 37 the minor one, of which only the low-order bytes are used.
/// Byte 34 distinguishes CS5.5 from CS5, in both byte orders.
class HeaderBlock {
 public:
  static constexpr std::size_t Size = 48;

  explicit HeaderBlock(String bytes) : bytes_(std::move(bytes)) {}

  /// True if the first 16 bytes are those of an InDesign document. No other operation looks at
  /// them.
  bool HasSignature() const;

  DocumentByteOrder ByteOrder() const;
  /// One byte; empty if the file ends before it.
  std::string_view VersionByte() const;
  /// The minor version, likewise.
  std::string_view MinorVersionByte() const;
  /// The document's row of the release table; nil if it has none.
  const VersionRow* Row() const;

 private:
  String bytes_;
};

}  // namespace vintrace::inspection
