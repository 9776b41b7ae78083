#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/Dictionary.h"
#include "platform/text/String.h"

/// What goes into a request, as functions of bytes.
namespace vintrace::http {

/// A URL as a request uses it. Whatever the text is, it has these parts.
struct RequestURL {
  String server;          ///< Host and port, as written.
  String host;            ///< The server up to its first colon: no IPv6 address is taken.
  std::int64_t port = 0;  ///< 0 when the URL names none.
  String path;            ///< With the query; "/" when there is none.
};

/// Splits `url`, whose scheme doesn't count.
RequestURL SplitURL(std::string_view url);

/// `text` as a part of a form: blanks become "+", and certain characters, hyphen and underscore
/// among them but neither point nor colon, "%" and two hexadecimal digits. All other bytes, those
/// above 127 too, stay as they are.
String _EncodeURLString(std::string_view text);

/// The fields of `form` in their order, as application/x-www-form-urlencoded.
String EncodeFields(const Dictionary<String>& form);

}  // namespace vintrace::http
