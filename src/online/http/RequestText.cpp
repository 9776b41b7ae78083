#include "online/http/RequestText.h"

#include "platform/text/Encodings.h"

namespace vintrace::http {
namespace {

constexpr std::string_view Escaped = "%&=,/\\][{}`~-_()*^$#!+;<>\r\n";

String Escape(char byte) { return '%' + EncodeUpperHex({&byte, 1}); }

}  // namespace

RequestURL SplitURL(std::string_view url) {
  constexpr std::string_view SchemeEnd = "://";
  if (const auto scheme = url.find(SchemeEnd); scheme != std::string_view::npos) {
    url.remove_prefix(scheme + SchemeEnd.size());
  }
  const auto slash = url.find('/');
  RequestURL parts;
  parts.server = url.substr(0, slash);
  parts.path = slash == std::string_view::npos ? "/" : url.substr(slash);
  const auto colon = parts.server.find(':');
  parts.host = parts.server.substr(0, colon);
  if (colon != String::npos) parts.port = Val(parts.server.substr(colon + 1));
  return parts;
}

String _EncodeURLString(std::string_view text) {
  String encoded;
  for (const char byte : text) {
    if (byte == ' ') {
      encoded += '+';
    } else if (Escaped.find(byte) != std::string_view::npos) {
      encoded += Escape(byte);
    } else {
      encoded += byte;
    }
  }
  return encoded;
}

String EncodeFields(const Dictionary<String>& form) {
  String fields;
  for (const auto& [key, value] : form) {
    fields += '&' + _EncodeURLString(key) + '=' + _EncodeURLString(value);
  }
  return fields.empty() ? fields : fields.substr(1);
}

}  // namespace vintrace::http
