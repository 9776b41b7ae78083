#include "platform/String.h"

#include <algorithm>

namespace vintrace {
namespace {

char FoldCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsControl(char c) { return (c >= 0x00 && c < 0x20) || c == 0x7F; }

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
  for (char c : text) {
    if (IsControl(c)) {
      line += Replacement;
    } else {
      line += c;
    }
  }
  return line;
}

}  // namespace vintrace
