#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/Dictionary.h"
#include "platform/text/String.h"

/// URLs and forms as requests use them. Texts may hold any bytes.
namespace vintrace::http {

/// The parts of a URL that a request uses. Any text can be split into them.
struct RequestURL {
  String server;          ///< Host and port, as written.
  String host;            ///< `server` up to its first colon: IPv6 addresses don't work.
  std::int64_t port = 0;  ///< 0 if the URL names none.
  String path;            ///< Includes the query; "/" if the URL has no path.
};

/// Splits `url`. Its scheme is optional and ignored.
RequestURL SplitURL(std::string_view url);

/// Encodes `text` for a form. Spaces become "+". CR, LF and all ASCII punctuation except for
/// " ' . : ? @ | become "%" and two upper-case hexadecimal digits. All other bytes, those above 127
/// too, are unchanged.
String _EncodeURLString(std::string_view text);

/// The fields of `form`, in order, as application/x-www-form-urlencoded.
String EncodeFields(const Dictionary<String>& form);

}  // namespace vintrace::http
