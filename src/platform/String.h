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

/// True when both are the same bytes, the case of ASCII letters aside. Nothing else is folded, and
/// nothing is trimmed.
bool TextEquals(std::string_view a, std::string_view b);

/// `text` as one line: every ASCII control character (0x00 to 0x1F, 0x7F) replaced by U+FFFD in
/// UTF-8. All other bytes stay as they are.
String OneLine(std::string_view text);

}  // namespace vintrace
