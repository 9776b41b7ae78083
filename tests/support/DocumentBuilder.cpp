#include "support/DocumentBuilder.h"

namespace vintrace::test {
namespace {

constexpr std::string_view Signature =
    "\x06\x06\xED\xF5\xD8\x1D\x46\xE5\xBD\x31\xEF\xE7\xFE\x74\xB7\x1D";

constexpr std::size_t ByteOrderOffset = 24;
constexpr std::size_t VersionOffset = 29;

}  // namespace

DocumentBuilder::DocumentBuilder(std::size_t size) : bytes_(size, 'x') {
  if (size > ByteOrderOffset) Put(0, Signature).Put(ByteOrderOffset, "\x01");
}

DocumentBuilder& DocumentBuilder::BigEndian() {
  bigEndian_ = true;
  return Put(ByteOrderOffset, "\x02");
}

DocumentBuilder& DocumentBuilder::Release(std::uint8_t majorVersion, std::uint8_t byteBehind) {
  majorVersion_ = majorVersion;
  std::string field(4, '\0');
  field[bigEndian_ ? 3 : 0] = static_cast<char>(majorVersion);
  return Put(VersionOffset, field + static_cast<char>(byteBehind));
}

DocumentBuilder& DocumentBuilder::Put(std::size_t offset, std::string_view bytes) {
  if (bytes_.size() < offset + bytes.size()) bytes_.resize(offset + bytes.size(), 'x');
  bytes_.replace(offset, bytes.size(), bytes);
  return *this;
}

DocumentBuilder& DocumentBuilder::Marker(std::size_t offset) {
  return Put(offset, bigEndian_ ? "\x4E\x0D\x66\x0E\x30\x6A\x30" : "\x4E\x0E\x66\x6A\x30\xE6\x30");
}

DocumentBuilder& DocumentBuilder::Delimiter(std::size_t offset, std::string_view text) {
  std::string delimiter = majorVersion_ > 9 ? "\x40" : bigEndian_ ? "\x40\x09" : "\x09\x40";
  delimiter += std::to_string(majorVersion_) + '.';
  return Put(offset, delimiter.append(text));
}

DocumentBuilder& DocumentBuilder::EditionBefore(std::size_t offset, std::uint8_t value) {
  const std::size_t distance = bigEndian_ ? 12 : majorVersion_ > 9 ? 14 : 13;
  return Put(offset - distance, std::string(1, static_cast<char>(value)));
}

DocumentBuilder& DocumentBuilder::Saved(std::size_t offset, std::uint8_t edition,
                                        std::string_view build) {
  constexpr std::size_t Behind = 64;
  Marker(offset).EditionBefore(offset + Behind, edition).Delimiter(offset + Behind, build);
  return *this;
}

}  // namespace vintrace::test
