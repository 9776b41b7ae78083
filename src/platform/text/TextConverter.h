#pragma once

#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

/// An encoding of texts, in the numbers of Apple's Text Encoding Converter.
struct TextEncoding {
  int base = 0;
  int variant = 0;
  int format = 0;

  bool operator==(const TextEncoding&) const = default;
};

/// Base 256 is Unicode's default, and its format 2 is UTF-8.
TextEncoding GetTextEncoding(int base, int variant, int format);

/// Turns text of one encoding into text of another.
class TextConverter {
 public:
  /// `text`: any bytes. What isn't valid in the source encoding comes out as U+FFFD, one for each
  /// longest beginning of a character, or else for each byte (Unicode 15.0, chapter 3.9).
  String convert(std::string_view text) const;
};

/// Raises `RuntimeException` unless both encodings are UTF-8, the only one that there is.
TextConverter GetTextConverter(const TextEncoding& from, const TextEncoding& to);

}  // namespace vintrace
