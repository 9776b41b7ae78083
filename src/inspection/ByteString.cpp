#include "inspection/ByteString.h"

#include <algorithm>

namespace vintrace::inspection {
namespace {

/// `n` clamped to the range from 0 to the size of `s`.
std::size_t Clamped(std::int64_t n, std::string_view s) {
  return static_cast<std::size_t>(std::clamp<std::int64_t>(n, 0, LenB(s)));
}

}  // namespace

std::int64_t LenB(std::string_view s) { return static_cast<std::int64_t>(s.size()); }

std::string_view LeftB(std::string_view s, std::int64_t n) { return s.substr(0, Clamped(n, s)); }

std::string_view RightB(std::string_view s, std::int64_t n) {
  return s.substr(s.size() - Clamped(n, s));
}

std::string_view MidB(std::string_view s, std::int64_t start, std::int64_t length) {
  if (start < 1) return {};
  return LeftB(s.substr(Clamped(start - 1, s)), length);
}

String ChrB(std::uint8_t n) { return String(1, static_cast<char>(n)); }

std::int64_t Asc(std::string_view s) {
  return s.empty() ? 0 : static_cast<std::uint8_t>(s.front());
}

std::int64_t InStrB(std::int64_t start, std::string_view source, std::string_view needle) {
  const auto found = source.find(needle, Clamped(std::max<std::int64_t>(start, 1) - 1, source));
  return found == std::string_view::npos ? 0 : static_cast<std::int64_t>(found) + 1;
}

std::int64_t CountFieldsB(std::string_view source, std::string_view delimiter) {
  if (source.empty()) return 0;
  std::int64_t count = 1;
  for (auto at = source.find(delimiter); at != std::string_view::npos;
       at = source.find(delimiter, at + delimiter.size())) {
    ++count;
  }
  return count;
}

std::string_view NthFieldB(std::string_view source, std::string_view delimiter, std::int64_t n) {
  if (n < 1) return {};
  for (; n > 1; --n) {
    const auto at = source.find(delimiter);
    if (at == std::string_view::npos) return {};
    source.remove_prefix(at + delimiter.size());
  }
  return source.substr(0, source.find(delimiter));
}

bool BeginsWithDigit(std::string_view s) {
  return !s.empty() && s.front() >= '0' && s.front() <= '9';
}

}  // namespace vintrace::inspection
