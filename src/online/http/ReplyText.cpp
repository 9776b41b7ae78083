#include "online/http/ReplyText.h"

#include <algorithm>

#include "online/http/InternetHeaders.h"
#include "platform/text/String.h"

namespace vintrace::http {

std::optional<HeaderEnd> FindHeaderEnd(std::string_view bytes, std::size_t searched) {
  // An end that isn't in the new bytes alone begins in the last three before them.
  const auto unsearched = bytes.substr(std::max<std::size_t>(searched, 3) - 3);
  const auto isIn = [&](std::string_view end) {
    return unsearched.find(end) != std::string_view::npos;
  };
  if (!isIn("\n\n") && !isIn("\r\n\r\n") && !isIn("\r\r")) return std::nullopt;
  for (const std::string_view end :
       {InternetHeaders::_DetermineEOLCharacter(bytes), std::string_view("\n"),
        std::string_view("\r\n"), std::string_view("\r")}) {
    const String twice = String(end) + String(end);
    const auto position = bytes.find(twice);
    if (position != std::string_view::npos) return HeaderEnd{position, twice.size()};
  }
  return std::nullopt;
}

std::int64_t StatusIn(std::string_view headers) {
  const auto line =
      headers.substr(0, headers.find(InternetHeaders::_DetermineEOLCharacter(headers)));
  const auto blank = line.find(' ');
  return blank == std::string_view::npos ? 0 : Val(line.substr(blank + 1));
}

}  // namespace vintrace::http
