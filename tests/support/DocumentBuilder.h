#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vintrace::test {

/// The offset of a document's body.
inline constexpr std::size_t BodyStart = 40960;

/// Builds the bytes of a document. Offsets are 0-based; bytes put past the end extend the document.
/// A new document has the signature of the format and little-endian byte order. All other bytes are
/// 'x', which occurs in no pattern.
class DocumentBuilder {
 public:
  explicit DocumentBuilder(std::size_t size);

  /// Sets the header: first the byte order, then the release. Both determine the later patterns.
  DocumentBuilder& BigEndian();
  DocumentBuilder& Release(std::uint8_t majorVersion, std::uint8_t byteBehind = 0);

  DocumentBuilder& Put(std::size_t offset, std::string_view bytes);
  DocumentBuilder& Marker(std::size_t offset);
  /// Puts the delimiter at `offset`, followed by `text`, which begins with a build: "0.0.370".
  DocumentBuilder& Delimiter(std::size_t offset, std::string_view text = {});
  /// Puts the edition byte of the delimiter at `offset`, for a block with the marker.
  DocumentBuilder& EditionBefore(std::size_t offset, std::uint8_t value);

  /// Puts the marker, the edition byte and the build close together, as in a saved document.
  DocumentBuilder& Saved(std::size_t offset, std::uint8_t edition, std::string_view build);

  const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
  bool bigEndian_ = false;
  std::uint8_t majorVersion_ = 0;
};

}  // namespace vintrace::test
