#include "online/http/Authentication.h"

#include <algorithm>

#include "platform/text/Encodings.h"

namespace vintrace::http {
namespace {

constexpr std::string_view Blanks = " \t";

std::string_view Stripped(std::string_view text) {
  const auto first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) + 1 - first);
}

/// The number of bytes of `text` before the first comma outside quotation marks.
std::size_t LengthOfItem(std::string_view text) {
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted = !quoted;
    if (text[i] == ',' && !quoted) return i;
    if (text[i] == '\\' && quoted) ++i;
  }
  return text.size();
}

std::string_view WithoutEnds(std::string_view text) {
  return text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
}

void AddItem(Dictionary<String>& parameters, std::string_view item) {
  const auto equals = item.find('=');
  const auto value =
      equals == std::string_view::npos ? std::string_view() : item.substr(equals + 1);
  parameters.Set(item.substr(0, equals), String(WithoutEnds(value)));
}

/// NAME="VALUE" and the separator before the next parameter.
String Quoted(std::string_view name, std::string_view value) {
  return String(name).append("=\"").append(value).append("\", ");
}

/// Eight hexadecimal digits, the form of the nonce count in RFC 2617, 3.2.2.
String NonceCount(std::int64_t uses) {
  const auto byte = [&](int shift) { return static_cast<char>(uses >> shift & 0xFF); };
  return _EncodeHex(String{byte(24), byte(16), byte(8), byte(0)});
}

}  // namespace

Challenge ParseChallenge(std::string_view header) {
  const auto blank = header.find(' ');
  const auto rest = blank == std::string_view::npos ? std::string_view() : header.substr(blank + 1);
  return {.scheme = String(header.substr(0, blank)),
          .parameters = _ParseAuthenticationParams(rest)};
}

Dictionary<String> _ParseAuthenticationParams(std::string_view text) {
  Dictionary<String> parameters;
  while (!text.empty()) {
    const auto length = LengthOfItem(text);
    if (const auto item = Stripped(text.substr(0, length)); !item.empty()) {
      AddItem(parameters, item);
    }
    text.remove_prefix(std::min(text.size(), length + 1));
  }
  return parameters;
}

String BasicAnswer(std::string_view userName, std::string_view password) {
  return "Basic " + EncodeBase64(String(userName).append(":").append(password));
}

String DigestAnswer(std::string_view userName, std::string_view password,
                    const Dictionary<String>& parameters, const DigestSources& sources) {
  const auto parameter = [&](std::string_view name) {
    return parameters.Lookup(name).value_or(String());
  };
  const auto hash = [&](const String& text) { return _EncodeHex(sources.hash(text)); };
  const String realm = parameter("realm");
  const String nonce = parameter("nonce");
  const String method = parameters.Lookup("method").value_or("GET");
  const String uri = parameters.Lookup("uri").value_or("/");
  const String count = NonceCount(sources.uses);

  // RFC 2617, 3.2.2.1 to 3.2.2.3: H(A1), H(A2) and the request-digest.
  const String secret =
      hash(String(userName).append(":").append(realm).append(":").append(password));
  const String request = hash(method + ':' + uri);
  const String response =
      hash(secret + ':' + nonce + ':' + count + ':' + sources.clientNonce + ":auth:" + request);
  String answer = "Digest " + Quoted("username", userName) + Quoted("realm", realm) +
                  Quoted("nonce", nonce) + Quoted("uri", uri) + "qop=auth, nc=" + count + ", " +
                  Quoted("cnonce", sources.clientNonce) + Quoted("response", response);
  if (const auto opaque = parameters.Lookup("opaque")) answer += "opaque=\"" + *opaque + '"';
  return answer;
}

String ClientNonce(const std::function<int(int, int)>& random) {
  constexpr int Length = 25;
  constexpr std::string_view Characters =
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  String nonce;
  for (int i = 0; i < Length; ++i) {
    nonce +=
        Characters[static_cast<std::size_t>(random(0, static_cast<int>(Characters.size()) - 1))];
  }
  return nonce;
}

}  // namespace vintrace::http
