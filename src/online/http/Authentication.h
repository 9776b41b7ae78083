#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/text/Dictionary.h"
#include "platform/text/String.h"

/// Answers to the challenges of servers and proxies (RFC 2617), as functions of bytes. Digest is
/// taken as far as the quality of protection "auth" and the algorithm MD5.
namespace vintrace::http {

/// What a server or proxy that asks for a password says.
struct Challenge {
  String scheme;                  ///< As written: "Basic", "Digest".
  Dictionary<String> parameters;  ///< Those with a quoted value; others are of no use.
};

/// Takes the value of a WWW-Authenticate or Proxy-Authenticate header apart.
Challenge ParseChallenge(std::string_view header);

/// The parameters of a challenge: NAME="VALUE", with commas between, which a value may hold too. Of
/// a value without quote marks the first and the last character are lost.
Dictionary<String> _ParseAuthenticationParams(std::string_view text);

/// What a Digest answer takes besides the challenge.
struct DigestSources {
  std::int64_t uses = 1;                         ///< Of the nonce, this one included.
  String clientNonce;                            ///< Random.
  std::function<String(std::string_view)> hash;  ///< MD5: 16 bytes.
};

String BasicAnswer(std::string_view userName, std::string_view password);

/// `parameters`: those of the challenge, and `method` and `uri` of the request, which are "GET" and
/// "/" without them.
String DigestAnswer(std::string_view userName, std::string_view password,
                    const Dictionary<String>& parameters, const DigestSources& sources);

/// 25 letters and digits. `random`: a number between two others, both included.
String ClientNonce(const std::function<int(int, int)>& random);

}  // namespace vintrace::http
