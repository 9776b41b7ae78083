#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// What is found in the bytes of a reply.
namespace vintrace::http {

/// Where the headers of a reply end.
struct HeaderEnd {
  std::size_t position = 0;   ///< The bytes before the blank line.
  std::size_t blankLine = 0;  ///< The bytes of the two line ends.
};

/// Finds the end of the headers in `bytes`: a line end twice, that of the bytes if it is there, and
/// else LF, CR LF or CR, whichever of them comes first in this order. Nil as long as it hasn't
/// come.
std::optional<HeaderEnd> FindHeaderEnd(std::string_view bytes);

/// The number in the second field, by blanks, of the first line; 0 when there is none.
std::int64_t StatusIn(std::string_view headers);

}  // namespace vintrace::http
