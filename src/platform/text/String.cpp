#include "platform/text/String.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace vintrace {
namespace {

char FoldCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameLetter(char a, char b) { return FoldCase(a) == FoldCase(b); }

/// The length in bytes of the control character or line break at the start of `text`; 0 if there is
/// none. In UTF-8, U+0080 to U+009F start with the byte C2.
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

std::int64_t Val(std::string_view text) {
  const auto digits = text.substr(0, text.find_first_not_of("0123456789"));
  std::int64_t number = 0;
  const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), number).ec;
  return error == std::errc::result_out_of_range ? std::numeric_limits<std::int64_t>::max()
                                                 : number;
}

String LowerASCII(std::string_view text) {
  String lower(text);
  std::ranges::transform(lower, lower.begin(), FoldCase);
  return lower;
}

bool TextEquals(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, SameLetter);
}

bool TextEndsWith(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() &&
         TextEquals(text.substr(text.size() - ending.size()), ending);
}

std::int64_t InStr(std::int64_t start, std::string_view source, std::string_view find) {
  const auto skipped = static_cast<std::size_t>(std::max<std::int64_t>(start, 1) - 1);
  if (skipped > source.size()) return 0;
  const auto found = std::search(source.begin() + static_cast<std::ptrdiff_t>(skipped),
                                 source.end(), find.begin(), find.end(), SameLetter);
  if (found == source.end() && !find.empty()) return 0;
  return found - source.begin() + 1;
}

String ReplaceAll(std::string_view source, std::string_view old, std::string_view with) {
  String replaced;
  while (!old.empty()) {
    const auto found = source.find(old);
    if (found == std::string_view::npos) break;
    replaced.append(source.substr(0, found)).append(with);
    source.remove_prefix(found + old.size());
  }
  return replaced.append(source);
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
