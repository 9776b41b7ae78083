#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/String.h"

/// Operations on strings of bytes, zero bytes included, without regard to an encoding. Positions
/// are 1-based. No operation raises. A `std::string_view` result points into the argument.
namespace vintrace::inspection {

/// The number of bytes of `s`.
std::int64_t LenB(std::string_view s);

/// The first or last `n` bytes of `s`; all of `s` if it has fewer, none if `n` is below 1.
std::string_view LeftB(std::string_view s, std::int64_t n);
std::string_view RightB(std::string_view s, std::int64_t n);

/// The `length` bytes of `s` from position `start`, or fewer if `s` ends first. Empty if `start` is
/// before the first byte or past the last, or `length` is below 1.
std::string_view MidB(std::string_view s, std::int64_t start, std::int64_t length);

/// The one-byte string of value `n`.
String ChrB(std::uint8_t n);

/// The value of the first byte of `s`, 0 to 255; 0 for the empty string.
std::int64_t Asc(std::string_view s);

/// The position of the first occurrence of `needle` in `source` at or after position `start`; 0 if
/// there is none. `start` 0 means the first byte.
std::int64_t InStrB(std::int64_t start, std::string_view source, std::string_view needle);

/// The number of fields into which `delimiter` divides `source`: its occurrences plus 1, or 0 for
/// an empty `source`. `delimiter` must not be empty.
std::int64_t CountFieldsB(std::string_view source, std::string_view delimiter);

/// Field `n` of `source`, counted from 1, without delimiters. Empty if there is no such field.
std::string_view NthFieldB(std::string_view source, std::string_view delimiter, std::int64_t n);

/// True if the first byte of `s` is an ASCII digit.
bool BeginsWithDigit(std::string_view s);

}  // namespace vintrace::inspection
