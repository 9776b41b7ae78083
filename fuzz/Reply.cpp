// Replies in arbitrary pieces, with and without a tunnel, a password and a blocking wait, which the
// bits of the first byte choose. 0xFF separates the pieces, and 0xFE the connections.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "Require.h"
#include "online/http/HTTPSecureSocket.h"
#include "support/ScriptedNetwork.h"

namespace vintrace::fuzz {
namespace {

std::vector<String> Split(std::string_view text, char separator) {
  std::vector<String> parts;
  while (true) {
    const auto end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

/// Requires that only a request for a tunnel is sent in the clear, unless `clear`.
void RequireSecrecy(const std::vector<String>& wire, bool clear) {
  bool secure = true;
  for (const auto& line : wire) {
    if (line.starts_with("host:") || line.starts_with("proxy:")) {
      secure = line.find(" tls host") != String::npos;
    } else if (line.starts_with("tls ")) {
      secure = true;
    } else {
      Require(secure || clear || line.starts_with("CONNECT host:443 "));
    }
  }
}

void Run(std::string_view bytes) {
  if (bytes.empty()) return;
  const auto chosen = [&](int bit) { return (bytes.front() & 1 << bit) != 0; };
  const bool blocks = chosen(0);
  const bool tunnel = chosen(1);
  const bool head = chosen(2);
  const bool knows = chosen(3);
  const bool peersEnd = chosen(4);
  const bool clear = chosen(5);
  test::ScriptedNetwork network;
  for (const auto& connection : Split(bytes.substr(1), '\xFE')) {
    auto pieces = Split(connection, '\xFF');
    test::ScriptedNetwork::Peer peer{.ends = peersEnd};
    // With a tunnel, the first piece is the proxy's reply.
    if (tunnel && pieces.size() > 1) {
      peer.replies.push_back({pieces.front()});
      pieces.erase(pieces.begin());
    }
    peer.replies.push_back(std::move(pieces));
    network.peers.push_back(std::move(peer));
  }
  http::HTTPSecureSocket socket(network);
  int ends = 0;
  if (clear) socket.SetSecure(false);
  if (tunnel) socket.HTTPProxyAddress = "proxy";
  if (knows) {
    socket.AuthenticationRequired = socket.ProxyAuthenticationRequired =
        [](const String&, const auto&, String& userName, String& password) {
          userName = password = "x";
          return true;
        };
  }
  socket.PageReceived = [&](auto&&...) { ++ends; };
  socket.Error = [&](auto&&...) { ++ends; };
  const String method = head ? "HEAD" : "GET";
  if (blocks) {
    const String page = socket.SendRequest(method, "host", 1);
    Require(!head || page.empty());
    Require(page.size() <= bytes.size());
  } else {
    socket.SendRequest(method, "host");
    network.RunEvents();
  }
  Require(ends <= 1 && (ends == 0 || !blocks));
  Require(socket.Secure() != clear || socket.tunnelMode == 1);
  RequireSecrecy(network.wire, clear);
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
