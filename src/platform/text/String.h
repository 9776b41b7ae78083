#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vintrace {

/// A counted sequence of bytes of any value. The program's own texts are UTF-8; bytes read from a
/// disk or a network may be anything, and no operation here looks at an encoding.
using String = std::string;

/// The line end inside the program's own texts.
inline constexpr std::string_view EndOfLine = "\n";

/// The decimal digits of `n`, without blanks or leading zeros.
String Str(std::int64_t n);

/// The value of the decimal digits at the start of `text`: 0 if there are none, and the greatest
/// `std::int64_t` if it would be greater.
std::int64_t Val(std::string_view text);

/// `text` with ASCII capitals replaced by small letters. All other bytes stay.
String LowerASCII(std::string_view text);

/// True if `a` and `b` have the same bytes, ignoring the case of ASCII letters.
bool TextEquals(std::string_view a, std::string_view b);

/// True if `text` ends with `ending`, compared like `TextEquals`.
bool TextEndsWith(std::string_view text, std::string_view ending);

/// The 1-based position of the first occurrence of `find` in `source` at or after `start`, compared
/// like `TextEquals`; 0 if there is none. `start` 0 means the first byte. An empty `find` is found
/// at `start`.
std::int64_t InStr(std::int64_t start, std::string_view source, std::string_view find);

/// `source` with every occurrence of `old` replaced by `with`, from left to right; the replacements
/// are not searched again. An empty `old` occurs nowhere.
String ReplaceAll(std::string_view source, std::string_view old, std::string_view with);

/// `text` as one line: U+FFFD replaces every control character (U+0000 to U+001F, U+007F to U+009F)
/// and line break (U+2028, U+2029) of its UTF-8. All other bytes stay, valid UTF-8 or not.
String OneLine(std::string_view text);

}  // namespace vintrace
