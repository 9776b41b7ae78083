#include "online/LineEnds.h"

namespace vintrace::online {

std::string_view DetermineEOLCharacter(std::string_view text) {
  constexpr std::string_view CarriageReturnLineFeed = "\r\n";
  for (const std::string_view end :
       {CarriageReturnLineFeed, std::string_view("\n"), std::string_view("\r")}) {
    if (text.find(end) != std::string_view::npos) return end;
  }
  return CarriageReturnLineFeed;
}

String WithoutLineEnds(std::string_view text) {
  return ReplaceAll(ReplaceAll(text, "\r", ""), "\n", "");
}

}  // namespace vintrace::online
