#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/text/Dictionary.h"
#include "platform/text/String.h"

/// Answers to authentication challenges of servers and proxies (RFC 2617). Texts may hold any
/// bytes. Digest answers always use the algorithm MD5 and the quality of protection "auth".
namespace vintrace::http {

struct Challenge {
  String scheme;                  ///< As written: "Basic", "Digest".
  Dictionary<String> parameters;  ///< Unquoted values lack their first and last byte.
};

/// Parses the value of a WWW-Authenticate or Proxy-Authenticate header.
Challenge ParseChallenge(std::string_view header);

/// Parses the parameters of a challenge: NAME="VALUE", separated by commas. A quoted value may
/// contain commas. A value without quotation marks loses its first and last byte.
Dictionary<String> _ParseAuthenticationParams(std::string_view text);

/// The inputs of a Digest answer besides the challenge.
struct DigestSources {
  std::int64_t uses = 1;                         ///< Uses of the server's nonce, this one included.
  String clientNonce;                            ///< From `ClientNonce`.
  std::function<String(std::string_view)> hash;  ///< Returns the 16 bytes of the MD5 digest.
};

/// The value of an Authorization or Proxy-Authorization header. `userName` must have no colon.
String BasicAnswer(std::string_view userName, std::string_view password);

/// The value of such a header. `parameters`: those of the challenge, and the request's `method` and
/// `uri`, by default "GET" and "/". Quotation marks and backslashes in texts are not escaped.
String DigestAnswer(std::string_view userName, std::string_view password,
                    const Dictionary<String>& parameters, const DigestSources& sources);

/// 25 random letters and digits. `random` returns a number between its arguments, both included.
String ClientNonce(const std::function<int(int, int)>& random);

}  // namespace vintrace::http
