#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/String.h"

/// Operations on strings of bytes. They count, cut and compare bytes, 0x00 included, and know no
/// encoding. Positions are 1-based. None of them changes its arguments or raises. A result that is
/// a `std::string_view` views the argument that it was cut from.
namespace vintrace::inspection {

/// The number of bytes of `s`.
std::int64_t LenB(std::string_view s);

/// The first or last `n` bytes of `s`; all of `s` when it has no more, nothing when `n` is below 1.
std::string_view LeftB(std::string_view s, std::int64_t n);
std::string_view RightB(std::string_view s, std::int64_t n);

/// The `length` bytes of `s` from position `start`, fewer when `s` ends first. Empty when `start`
/// lies before the first byte or past the last, or when `length` is below 1.
std::string_view MidB(std::string_view s, std::int64_t start, std::int64_t length);

/// The one-byte string of value `n`.
String ChrB(std::uint8_t n);

/// The value of the first byte of `s`, 0 to 255; 0 for the empty string.
std::int64_t Asc(std::string_view s);

/// The position of the first occurrence of `needle` in `source` from position `start` on, 0 when
/// there is none. `start` 0 searches from the first byte.
std::int64_t InStrB(std::int64_t start, std::string_view source, std::string_view needle);

/// How many fields `delimiter`, which isn't empty, divides `source` into: the number of its
/// occurrences plus 1, but 0 for an empty `source`.
std::int64_t CountFieldsB(std::string_view source, std::string_view delimiter);

/// Field `n` of `source`, counted from 1, without the delimiters. Empty when there is no such
/// field.
std::string_view NthFieldB(std::string_view source, std::string_view delimiter, std::int64_t n);

/// True when the first byte of `s` is an ASCII digit; false for the empty string.
bool BeginsWithDigit(std::string_view s);

}  // namespace vintrace::inspection
