#include "inspection/ByteString.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace vintrace::inspection {
namespace {

constexpr std::size_t Step = 64;  // Bytes that are compared at once.

template <std::size_t width>
struct Vector {
  using Type [[gnu::vector_size(width)]] = signed char;

  /// Clears all places in `equal` but those from `bytes` on where the byte is `wanted`.
  [[gnu::always_inline]] static void Keep(Type (&equal)[Step / width], const char* bytes,
                                          char wanted) {
    for (std::size_t i = 0; i < Step / width; ++i) {
      Type read;
      std::memcpy(&read, bytes + i * width, width);
      equal[i] &= read == static_cast<signed char>(wanted);
    }
  }
};

/// The first of `start`, `start` + `Step`, … from which `needle` begins within `Step` places in
/// `source`; otherwise the one where too few bytes are left to tell. Takes about the same time
/// whatever the bytes: compares the first and the last byte of `needle` at all places at once, and
/// then all of its bytes. Inlined, and so compiled for the processor of its caller.
template <std::size_t width>
[[gnu::always_inline]] inline std::size_t Near(std::string_view source, std::string_view needle,
                                               std::size_t start) {
  const std::size_t last = needle.size() - 1;
  for (; start + Step + last <= source.size(); start += Step) {
    const char* bytes = source.data() + start;
    typename Vector<width>::Type equal[Step / width];
    const auto isAny = [&] {
      std::uint64_t words[Step / sizeof(std::uint64_t)];
      std::memcpy(words, equal, sizeof words);
      return std::ranges::any_of(words, [](std::uint64_t word) { return word != 0; });
    };
    std::memset(equal, 0xFF, sizeof equal);
    Vector<width>::Keep(equal, bytes, needle.front());
    Vector<width>::Keep(equal, bytes + last, needle.back());
    if (!isAny()) continue;
    for (std::size_t i = 1; i < last; ++i) Vector<width>::Keep(equal, bytes + i, needle[i]);
    if (isAny()) break;
  }
  return start;
}

#ifdef __x86_64__
[[gnu::target("avx2")]] std::size_t NearByAVX2(std::string_view source, std::string_view needle,
                                               std::size_t start) {
  return Near<32>(source, needle, start);
}
#endif

/// The offset of the first `needle` in `source` at or after `start`; npos if there is none.
std::size_t Find(std::string_view source, std::string_view needle, std::size_t start = 0) {
  if (needle.empty()) return source.find(needle, start);
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx2")) {
    return source.find(needle, NearByAVX2(source, needle, start));
  }
#endif
  return source.find(needle, Near<16>(source, needle, start));
}

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
  const auto found = Find(source, needle, Clamped(std::max<std::int64_t>(start, 1) - 1, source));
  return found == std::string_view::npos ? 0 : static_cast<std::int64_t>(found) + 1;
}

std::int64_t CountFieldsB(std::string_view source, std::string_view delimiter) {
  if (source.empty()) return 0;
  std::int64_t count = 1;
  for (auto at = Find(source, delimiter); at != std::string_view::npos;
       at = Find(source, delimiter, at + delimiter.size())) {
    ++count;
  }
  return count;
}

std::string_view NthFieldB(std::string_view source, std::string_view delimiter, std::int64_t n) {
  if (n < 1) return {};
  for (; n > 1; --n) {
    const auto at = Find(source, delimiter);
    if (at == std::string_view::npos) return {};
    source.remove_prefix(at + delimiter.size());
  }
  return source.substr(0, Find(source, delimiter));
}

bool BeginsWithDigit(std::string_view s) {
  return !s.empty() && s.front() >= '0' && s.front() <= '9';
}

}  // namespace vintrace::inspection
