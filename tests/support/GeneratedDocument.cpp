#include "support/GeneratedDocument.h"

#include "support/DocumentBuilder.h"

namespace vintrace::test {
namespace {

constexpr std::size_t ByteOrderOffset = 24;
constexpr std::size_t BlockSize = 6144;
constexpr std::size_t BlockStride = 4096;

/// Where the pieces end in which the scan reads a document, from the start of its body.
constexpr std::size_t PieceEnds[] = {6144, 53248, 311296};

class Generator {
 public:
  explicit Generator(std::string_view choices) : choices_(choices) {}

  std::string Next() {
    isLong_ = OneIn(60);
    DocumentBuilder document(Size());
    const bool big = OneIn(3);
    if (big) document.BigEndian();
    const std::uint8_t version = OneIn(20) ? Byte(0, 255) : Byte(3, 14);
    const std::uint8_t behind = OneIn(3) ? 5 : 0;
    if (!OneIn(50)) document.Release(version, behind);
    for (auto pieces = Between(0, 8); pieces > 0; --pieces) PutPiece(document, big);
    if (OneIn(20)) document.Put(ByteOrderOffset, std::string(1, static_cast<char>(Byte(0, 3))));
    std::string bytes = document.Bytes();
    if (OneIn(4)) bytes.resize(Between(0, bytes.size()));
    return bytes;
  }

 private:
  /// A number from `low` to `high`, both included; `low` when no choice is left.
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

  /// A size within the header, or near an end of the body's blocks or pieces.
  std::size_t Size() {
    if (OneIn(20)) return Between(0, 60);
    const std::size_t border = Border();
    return border - 3 + Between(0, 6);
  }

  std::size_t Block() { return BodyStart + Between(0, isLong_ ? 80 : 3) * BlockStride; }
  /// An offset at which a block begins or ends.
  std::size_t Border() {
    if (isLong_ && OneIn(2)) return BodyStart + PieceEnds[Between(0, 2)];
    const std::size_t block = Block();
    return OneIn(2) ? block : block + BlockSize;
  }

  std::string BuildLike() {
    constexpr std::string_view Alphabet("0123456789.5x/:\0\x01\x03\x40\x09", 20);
    std::string text(Between(0, 9), '\0');
    for (char& c : text) c = Alphabet[Between(0, Alphabet.size() - 1)];
    return text;
  }

  void PutPiece(DocumentBuilder& document, bool big) {
    const std::size_t border = Border();
    const std::size_t place = border - 40 + Between(0, 80);
    const std::uint8_t edition = Byte(0, 4);
    switch (Between(0, 5)) {
      case 0:
        document.Marker(place);
        break;
      case 1:
        document.Delimiter(place, BuildLike());
        break;
      case 2:
        document.Saved(place, edition, BuildLike());
        break;
      case 3:
        document.EditionBefore(place, edition);
        break;
      case 4:  // The edition byte of a block without a marker.
        document.Put(Block() + (big ? 22 : 18), std::string(1, static_cast<char>(edition)));
        break;
      default:
        document.Put(place, BuildLike());
    }
  }

  std::string_view choices_;
  bool isLong_ = false;  // A few documents have many blocks.
};

}  // namespace

std::string GeneratedDocument(std::string_view choices) { return Generator(choices).Next(); }

}  // namespace vintrace::test
