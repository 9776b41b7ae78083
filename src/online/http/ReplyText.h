#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// Parsing of replies.
namespace vintrace::http {

/// Where the headers of a reply end.
struct HeaderEnd {
  std::size_t position = 0;   ///< Offset of the two line ends.
  std::size_t blankLine = 0;  ///< Length of the two line ends.
};

/// Finds the end of the headers in `bytes`: two line ends in a row. Tries the line end that
/// `InternetHeaders::_DetermineEOLCharacter` detects, then LF, CR LF and CR. Nil if there is none.
/// `searched`: how many leading bytes earlier calls have searched without finding it.
std::optional<HeaderEnd> FindHeaderEnd(std::string_view bytes, std::size_t searched);

/// The status: the number after the first space in the first line; 0 if there is none.
std::int64_t StatusIn(std::string_view headers);

}  // namespace vintrace::http
