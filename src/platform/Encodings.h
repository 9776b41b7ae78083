#pragma once

#include <string_view>

#include "platform/String.h"

namespace vintrace {

/// `bytes` in Base64 (RFC 4648, 4), padded, in one line.
String EncodeBase64(std::string_view bytes);

}  // namespace vintrace
