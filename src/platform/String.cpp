#include "platform/String.h"

#include <algorithm>

namespace vintrace {
namespace {

char FoldCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// How many bytes of `text` are a control character or a line break at its beginning; 0 for none.
/// In UTF-8, U+0080 to U+009F begin with the byte C2, U+2028 and U+2029 with E2 80.
std::size_t ControlLength(std::string_view text) {
  const auto byteAt = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  if (byteAt(0) < 0x20 || byteAt(0) == 0x7F) return 1;
  if (byteAt(0) == 0xC2 && byteAt(1) >= 0x80 && byteAt(1) <= 0x9F) return 2;
  const bool separator = text.starts_with("\u2028") || text.starts_with("\u2029");
  return separator ? 3 : 0;
}

}  // namespace

String Str(std::int64_t n) { return std::to_string(n); }

bool TextEquals(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return FoldCase(x) == FoldCase(y); });
}

String OneLine(std::string_view text) {
  constexpr std::string_view Replacement = "\xEF\xBF\xBD";
  String line;
  line.reserve(text.size());
  while (!text.empty()) {
    const std::size_t control = ControlLength(text);
    line += control > 0 ? Replacement : text.substr(0, 1);
    text.remove_prefix(std::max<std::size_t>(control, 1));
  }
  return line;
}

}  // namespace vintrace
