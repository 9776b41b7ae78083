#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vintrace::test {

/// Where the body of a document begins.
inline constexpr std::size_t BodyStart = 40960;

/// Makes the bytes of a document from a description of what stands where. Offsets are 0-based; what
/// is put past the end makes the document longer. A new one is little-endian, with the signature of
/// the format and otherwise all bytes 'x', which no pattern holds.
class DocumentBuilder {
 public:
  explicit DocumentBuilder(std::size_t size);

  /// The header: byte order first, then the release, whose pattern `Marker` and `Delimiter` put.
  DocumentBuilder& BigEndian();
  DocumentBuilder& Release(std::uint8_t majorVersion, std::uint8_t byteBehind = 0);

  DocumentBuilder& Put(std::size_t offset, std::string_view bytes);
  DocumentBuilder& Marker(std::size_t offset);
  /// The delimiter at `offset` and `text` behind it, such as "0.0.370" and what follows it.
  DocumentBuilder& Delimiter(std::size_t offset, std::string_view text = {});
  /// The edition byte that belongs to the delimiter at `offset` in a block with the marker.
  DocumentBuilder& EditionBefore(std::size_t offset, std::uint8_t value);

  /// What a saved document has: the marker, the edition byte and the build, all in one block.
  DocumentBuilder& Saved(std::size_t offset, std::uint8_t edition, std::string_view build);

  const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
  bool bigEndian_ = false;
  std::uint8_t majorVersion_ = 0;
};

}  // namespace vintrace::test
