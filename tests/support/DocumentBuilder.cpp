#include "support/DocumentBuilder.h"

namespace vintrace::test {
namespace {

constexpr std::string_view Signature =
    "\x06\x06\xED\xF5\xD8\x1D\x46\xE5\xBD\x31\xEF\xE7\xFE\x74\xB7\x1D";

constexpr std::size_t ByteOrderOffset = 24;
constexpr std::size_t VersionOffset = 29;

class DocumentGenerator {
 public:
  explicit DocumentGenerator(std::string_view choices) : choices_(choices) {}

  std::string Next() {
    DocumentBuilder document(Size());
    if (OneIn(3)) document.BigEndian();
    if (!OneIn(50)) document.Release(Version(), OneIn(3) ? 5 : 0);
    PutPieces(document);
    if (OneIn(20)) document.Put(ByteOrderOffset, std::string(1, static_cast<char>(Byte(0, 3))));
    std::string bytes = document.Bytes();
    if (OneIn(4)) bytes.resize(Between(0, bytes.size()));
    return bytes;
  }

 private:
  /// The lowest when no choice is left.
  std::size_t Between(std::size_t low, std::size_t high) {
    const std::string_view two = choices_.substr(0, 2);
    choices_.remove_prefix(two.size());
    std::size_t number = 0;
    for (const char byte : two) number = number << 8 | static_cast<unsigned char>(byte);
    return low + number % (high - low + 1);
  }
  std::uint8_t Byte(std::size_t low, std::size_t high) {
    return static_cast<std::uint8_t>(Between(low, high));
  }
  bool OneIn(std::size_t n) { return Between(1, n) == n; }

  std::uint8_t Version() { return OneIn(20) ? Byte(0, 255) : Byte(3, 14); }

  /// A size near one at which something changes.
  std::size_t Size() { return OneIn(20) ? Between(0, 60) : Boundary() - 3 + Between(0, 6); }

  /// An offset at which a block begins or ends.
  std::size_t Boundary() {
    const std::size_t block = BodyStart + Between(0, 3) * BlockStride;
    return OneIn(2) ? block : block + BlockSize;
  }

  std::string BuildLike() {
    constexpr std::string_view Alphabet("0123456789.5x/:\0\x01\x03\x40\x09", 20);
    std::string text(Between(0, 9), '\0');
    for (char& c : text) c = Alphabet[Between(0, Alphabet.size() - 1)];
    return text;
  }

  void PutPieces(DocumentBuilder& document) {
    const auto near = [&] { return Boundary() - 40 + Between(0, 80); };
    for (auto rounds = Between(0, 2); rounds > 0; --rounds) {
      if (OneIn(2)) document.Marker(near());
      if (OneIn(2)) document.Delimiter(near(), BuildLike());
      if (OneIn(2)) document.Saved(near(), Byte(0, 4), BuildLike());
      if (OneIn(2)) document.Put(near(), BuildLike());
      if (OneIn(2)) document.EditionBefore(near(), Byte(0, 4));
    }
  }

  std::string_view choices_;
};

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

std::string DocumentOf(std::string_view choices) { return DocumentGenerator(choices).Next(); }

}  // namespace vintrace::test
