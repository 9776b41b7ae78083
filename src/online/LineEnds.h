#pragma once

#include <string_view>

#include "platform/String.h"

namespace vintrace::online {

/// CR LF if `text` has one anywhere, or else LF if it has one, or else CR; CR LF if it has none.
std::string_view DetermineEOLCharacter(std::string_view text);

/// `text` without carriage returns and line feeds, which would begin another line of a request.
String WithoutLineEnds(std::string_view text);

}  // namespace vintrace::online
