#pragma once

#include <string_view>

#include "platform/text/String.h"

namespace vintrace {

/// `bytes` in Base64 (RFC 4648, section 4), padded, without line breaks.
String EncodeBase64(std::string_view bytes);

/// Two lower-case hexadecimal digits for each byte.
String _EncodeHex(std::string_view bytes);
/// The same in upper case.
String EncodeUpperHex(std::string_view bytes);

}  // namespace vintrace
