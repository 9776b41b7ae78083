#pragma once

#include <string_view>

#include "platform/String.h"

namespace vintrace::posix {

/// The first of both folders that is the user's own and that nobody else may enter; empty when
/// neither is. Each is made if there is none; `preferred` counts only if it is absolute.
String RuntimeFolder(std::string_view preferred, const String& fallback);

/// The name of the socket for the display of that name, which may hold anything.
String SocketName(std::string_view display);

}  // namespace vintrace::posix
