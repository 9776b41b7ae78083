#pragma once

#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

/// `bytes` in Base64 (RFC 4648, section 4), padded, without line breaks.
String EncodeBase64(std::string_view bytes);

/// Two hexadecimal digits for each byte, in lower or upper case.
String _EncodeHex(std::string_view bytes);
String EncodeUpperHex(std::string_view bytes);

}  // namespace vintrace
