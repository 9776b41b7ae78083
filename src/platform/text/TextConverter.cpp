#include "platform/text/TextConverter.h"

#include <algorithm>

#include "platform/text/Exceptions.h"

namespace vintrace {
namespace {

constexpr TextEncoding Utf8{256, 0, 2};

/// The bytes after the first one of a character: their number, and the bounds of the next one. All
/// later ones are 80 to BF.
struct Followers {
  unsigned count = 0;
  unsigned low = 0x80;
  unsigned high = 0xBF;
};

// Well-formed UTF-8 byte sequences, table 3-7 of Unicode 15.0. No sequence begins with 80 to C1 or
// with F5 to FF.
Followers FollowersOf(unsigned first) {
  if (first >= 0xC2 && first <= 0xDF) return {.count = 1};
  if (first == 0xE0) return {.count = 2, .low = 0xA0};
  if (first == 0xED) return {.count = 2, .high = 0x9F};
  if (first >= 0xE1 && first <= 0xEF) return {.count = 2};
  if (first == 0xF0) return {.count = 3, .low = 0x90};
  if (first >= 0xF1 && first <= 0xF3) return {.count = 3};
  if (first == 0xF4) return {.count = 3, .high = 0x8F};
  return {};
}

struct Piece {
  std::size_t length;
  bool valid;
};

/// The first character of `text`, complete or not, or an invalid byte. `text` must not be empty.
Piece FirstPiece(std::string_view text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byteAt(0) < 0x80) return {1, true};
  Followers followers = FollowersOf(byteAt(0));
  const std::size_t whole = 1 + followers.count;
  std::size_t length = 1;
  while (length < std::min(whole, text.size())) {
    if (byteAt(length) < followers.low || byteAt(length) > followers.high) break;
    followers = {};
    ++length;
  }
  return {length, whole > 1 && length == whole};
}

}  // namespace

TextEncoding GetTextEncoding(int base, int variant, int format) { return {base, variant, format}; }

TextConverter GetTextConverter(const TextEncoding& from, const TextEncoding& to) {
  if (from != Utf8 || to != Utf8) throw RuntimeException("no such text converter");
  return {};
}

String TextConverter::convert(std::string_view text) const {
  constexpr std::string_view Replacement = "\uFFFD";
  String converted;
  converted.reserve(text.size());
  while (!text.empty()) {
    const Piece piece = FirstPiece(text);
    converted += piece.valid ? text.substr(0, piece.length) : Replacement;
    text.remove_prefix(piece.length);
  }
  return converted;
}

}  // namespace vintrace
