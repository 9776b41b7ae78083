#pragma once

#include <cstdint>
#include <string_view>

#include "platform/String.h"
#include "resources/Pictures.h"

namespace vintrace::inspection {

/// The order of a document's bytes, from byte 25 of its header.
enum class DocumentByteOrder { Little, Big };

/// One release of the table.
struct VersionRow {
  std::uint8_t versionByte;      ///< The document's major version.
  std::string_view productText;  ///< The release's name; applications are looked up by it.
  PictureAccessor picture;
  std::string_view buildPrefix;  ///< The major version in decimal and a point.
};

/// The first bytes of a document, from byte 1: 48, or fewer if the file is shorter. The format has
/// a byte-order flag at byte 25 (2: big-endian) and the 32-bit major version at bytes 30 to 33, of
/// which only the low-order byte counts. The byte behind it, 34, tells CS5.5 from CS5.
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

/// The row of CS5.5, which has no version byte of its own.
const VersionRow& RowOfCS55();

/// The product text for a document outside the table. `version`: its version byte, 0 to 255.
String OutOfTableText(std::int64_t version);

}  // namespace vintrace::inspection
