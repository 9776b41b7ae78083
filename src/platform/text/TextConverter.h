#pragma once

#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

/// A text encoding, numbered as in Apple's Text Encoding Converter.
struct TextEncoding {
  int base = 0;
  int variant = 0;
  int format = 0;

  bool operator==(const TextEncoding&) const = default;
};

/// The encoding with these numbers, whatever they are. UTF-8 is base 256 (the default Unicode
/// version), variant 0, format 2.
TextEncoding GetTextEncoding(int base, int variant, int format);

/// Converts text from one encoding to another.
class TextConverter {
 public:
  /// `text`: any bytes. Each maximal subpart of an ill-formed sequence becomes one U+FFFD
  /// (Unicode 15.0, chapter 3.9).
  String convert(std::string_view text) const;
};

/// Raises `RuntimeException` unless both encodings are UTF-8, the only supported one.
TextConverter GetTextConverter(const TextEncoding& from, const TextEncoding& to);

}  // namespace vintrace
