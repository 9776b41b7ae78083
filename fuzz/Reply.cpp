// Replies in arbitrary pieces, into the receiving code, with and without a tunnel, a password and a
// wait. The first byte chooses; 0xFF separates the pieces, and 0xFE what is sent on one connection.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Require.h"
#include "online/HTTPSecureSocket.h"
#include "support/ScriptedNetwork.h"

namespace vintrace::fuzz {
namespace {

using online::HTTPSecureSocket;

std::vector<String> Split(std::string_view text, char separator) {
  std::vector<String> parts;
  while (true) {
    const auto end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

struct Choices {
  explicit Choices(unsigned char byte)
      : blocks((byte & 1) != 0),
        tunnel((byte & 2) != 0),
        head((byte & 4) != 0),
        knows((byte & 8) != 0),
        ends((byte & 16) != 0),
        clear((byte & 32) != 0) {}
  bool blocks, tunnel, head, knows, ends, clear;
};

/// Nothing but the question for a tunnel goes out in the clear, unless that is asked for.
void RequireSecrecy(const std::vector<String>& wire, const Choices& choices) {
  bool secure = true;
  for (const auto& line : wire) {
    if (line.starts_with("host:") || line.starts_with("proxy:")) {
      secure = line.find(" tls host") != String::npos;
    } else if (line.starts_with("tls ")) {
      secure = true;
    } else {
      Require(secure || choices.clear || line.starts_with("CONNECT host:443 "));
    }
  }
}

void Run(std::string_view bytes) {
  if (bytes.empty()) return;
  const Choices choices(static_cast<unsigned char>(bytes.front()));
  test::ScriptedNetwork network;
  for (const auto& connection : Split(bytes.substr(1), '\xFE')) {
    const auto pieces = Split(connection, '\xFF');
    test::ScriptedNetwork::Peer peer{.ends = choices.ends};
    // In a tunnel the first piece answers for the proxy.
    if (choices.tunnel && pieces.size() > 1) {
      peer.replies = {{pieces.front()}, {pieces.begin() + 1, pieces.end()}};
    } else {
      peer.replies = {pieces};
    }
    network.peers.push_back(std::move(peer));
  }
  HTTPSecureSocket socket(network);
  int ends = 0;
  if (choices.clear) socket.SetSecure(false);
  if (choices.tunnel) socket.HTTPProxyAddress = "proxy";
  if (choices.knows) {
    socket.AuthenticationRequired = socket.ProxyAuthenticationRequired =
        [](const String&, const auto&, String& userName, String& password) {
          userName = password = "x";
          return true;
        };
  }
  socket.PageReceived = [&](auto&&...) { ++ends; };
  socket.Error = [&](auto&&...) { ++ends; };
  const String method = choices.head ? "HEAD" : "GET";
  if (choices.blocks) {
    const String page = socket.SendRequest(method, "host", 1);
    Require(!choices.head || page.empty());
    Require(page.size() <= bytes.size());
  } else {
    socket.SendRequest(method, "host");
    network.RunEvents();
  }
  Require(ends <= 1 && (ends == 0 || !choices.blocks));
  Require(socket.Secure() != choices.clear || socket.tunnelMode == 1);
  RequireSecrecy(network.wire, choices);
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
