#pragma once

#include <string_view>

#include "platform/String.h"

namespace vintrace::posix {

/// The first of both folders that is the user's own and that nobody else may enter; empty when
/// neither is. `fallback` is made if there is none.
String RuntimeFolder(std::string_view preferred, const String& fallback);

/// The name of the socket for the display of that name, which may hold anything.
String SocketName(std::string_view display);

}  // namespace vintrace::posix
