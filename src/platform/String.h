#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vintrace {

/// A counted sequence of bytes that may hold any value. The program's own texts in it are UTF-8;
/// what comes from a disk is whatever it is, and nothing here looks at an encoding.
using String = std::string;

/// The line end between the lines of a text of the program's own.
inline constexpr std::string_view EndOfLine = "\n";

/// The decimal digits of `n`, with no blank and no leading zero.
String Str(std::int64_t n);

/// The number that the decimal digits at the beginning of `text` make; 0 when there are none, and
/// the greatest there is when it would be greater.
std::int64_t Val(std::string_view text);

/// True when both are the same bytes, the case of ASCII letters aside. Nothing else is folded, and
/// nothing is trimmed.
bool TextEquals(std::string_view a, std::string_view b);

/// The 1-based position of the first occurrence of `find` in `source` from position `start` on, as
/// `TextEquals` compares; 0 when there is none. `start` 0 searches from the first byte. An empty
/// `find` is found where the search begins.
std::int64_t InStr(std::int64_t start, std::string_view source, std::string_view find);

/// `source` with every occurrence of `old` replaced by `with`, from the first byte on and without
/// looking at what has been put in. An empty `old` occurs nowhere.
String ReplaceAll(std::string_view source, std::string_view old, std::string_view with);

/// `text` as one line: every control character (U+0000 to U+001F, U+007F to U+009F) and line break
/// (U+2028, U+2029) of its UTF-8 replaced by U+FFFD. All other bytes, valid or not, stay as they
/// are.
String OneLine(std::string_view text);

}  // namespace vintrace
