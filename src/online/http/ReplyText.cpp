#include "online/http/ReplyText.h"

#include "online/http/InternetHeaders.h"
#include "platform/text/String.h"

namespace vintrace::http {

std::optional<HeaderEnd> FindHeaderEnd(std::string_view bytes) {
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
