// Answers to authentication challenges.

#include <utility>

#include "online/http/Authentication.h"
#include "online/http/HTTPSecureSocket.h"

namespace vintrace::http {

bool HTTPSecureSocket::_SetAuthentication(std::string_view kind) {
  const bool proxy = kind == "Proxy";
  if (tunnelMode == 1 && !proxy) return false;  // The server hasn't seen a request yet.
  auto challenge = ParseChallenge(_pageHeaders->Value(String(kind) + "-Authenticate"));
  auto& parameters = challenge.parameters;
  // A proxy that opens a tunnel authenticates CONNECT, not the request inside the tunnel.
  parameters.Set("method", tunnelMode == 1 ? "CONNECT" : _httpAction);
  parameters.Set("uri", tunnelMode == 1 ? TunnelTarget() : _processingURL);
  if (const auto nonce = parameters.Lookup("nonce")) {
    _lastServerNonce = *nonce;
  } else {
    parameters.Set("nonce", _lastServerNonce);
  }

  const Question question = proxy ? ProxyAuthenticationRequired : AuthenticationRequired;
  const auto exchange = Exchange();
  String userName;
  String password;
  const bool answers = question && question(parameters.Lookup("realm").value_or(String()),
                                            HeadersPointer(_pageHeaders), userName, password);
  if (exchange.expired() || !answers) return false;
  String key = _CreateAuthenticationData(challenge.scheme, userName, password, parameters);
  if (key.empty()) return false;
  (proxy ? _proxyAuthenticationKey : _authenticationKey) = std::move(key);
  return true;
}

String HTTPSecureSocket::_CreateAuthenticationData(std::string_view scheme, const String& userName,
                                                   const String& password,
                                                   const Dictionary<String>& parameters) {
  if (TextEquals(scheme, "Digest")) {
    const String nonce = parameters.Lookup("nonce").value_or(String());
    const auto uses = _Nonces.Lookup(nonce).value_or(0) + 1;
    _Nonces.Set(nonce, uses);
    return DigestAnswer(userName, password, parameters,
                        {.uses = uses,
                         .clientNonce = _CreateNonce(),
                         .hash = [this](std::string_view text) { return TheNetwork().MD5(text); }});
  }
  return TextEquals(scheme, "Basic") ? BasicAnswer(userName, password) : String();
}

String HTTPSecureSocket::_CreateNonce() {
  return ClientNonce([this](int least, int most) { return TheNetwork().InRange(least, most); });
}

}  // namespace vintrace::http
