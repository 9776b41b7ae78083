// The client with the servers and the proxy that people use.

#include <filesystem>
#include <memory>

#include "peers/PeerFixture.h"
#include "peers/Servers.h"
#include "platform/BinaryStream.h"

namespace vintrace::test {
namespace {

using ServersTest = PeerTest;

/// Knows the user and this password, and gives it so many times.
HTTPSecureSocket::Question Knows(const String& secret = "secret", int times = 1) {
  const auto left = std::make_shared<int>(times);
  return [secret, left](const String&, const auto&, String& userName, String& password) {
    userName = "user";
    password = secret;
    return (*left)-- > 0;
  };
}

TEST_F(ServersTest, NginxServesEveryKindOfPage) {
  const Nginx nginx(folder.Path(), valid);
  for (const bool newer : {false, true}) {
    const auto url = [&](const String& path) {
      return newer ? nginx.Tls13(path) : nginx.Tls12(path);
    };
    const struct {
      String path, page;
      std::int64_t status;
    } rows[] = {
        {"/page", "a page", 200}, {"/closed", "a page", 200}, {"/moved", "301", 301},
        {"/missing", "404", 404}, {"/broken", "broken", 500}, {"/basic", "401", 401},
    };
    HTTPSecureSocket socket(network);
    for (const auto& [path, page, status] : rows) {
      EXPECT_NE(socket.Get(url(path), Patience).find(page), String::npos) << path;
      EXPECT_EQ(socket.HTTPStatusCode(), status) << path;
      EXPECT_EQ(socket.ErrorCode(), 0) << path;
    }
    EXPECT_EQ(socket.GetHeaders(url("/page"), Patience)->Value("Content-Length"), "6");
    EXPECT_EQ(socket.GetHeaders(url("/closed"), Patience)->NameCount("Content-Length"), 0);

    socket.SetRequestContent("the body", "text/x");
    socket.SetRequestHeader("X", "1\r\nX-Body: 2");
    EXPECT_EQ(socket.Post(url("/echo"), Patience), "text/x|1X-Body: 2|the body");
    EXPECT_EQ(socket.Get(url("/slow"), 2).size(), 4000U) << "slower than the limit of silence";
    EXPECT_EQ(socket.ErrorCode(), 0);
  }
}

TEST_F(ServersTest, FiftyMegabytesComeToMemoryAndIntoAFile) {
  const Nginx nginx(folder.Path(), valid);
  HTTPSecureSocket socket(network);
  EXPECT_EQ(socket.Get(nginx.Tls13("/large"), Patience), String(50 << 20, '\0'));
  const FolderItem file = folder.Item("download");
  EXPECT_TRUE(socket.Get(nginx.Tls13("/large"), file, 60));
  EXPECT_EQ(std::filesystem::file_size(file.NativePath()), 50U << 20);
}

TEST_F(ServersTest, PasswordsOpenPagesAndWrongOnesDoNot) {
  const Nginx nginx(folder.Path(), valid);
  const Apache apache(folder.Path(), valid);
  for (const auto& url : {nginx.Tls13("/basic"), apache.URL("/basic"), apache.URL("/digest"),
                          apache.URL("/digest?a=b&c=d")}) {
    HTTPSecureSocket socket(network);
    for (int request = 0; request < 3; ++request) {
      socket.AuthenticationRequired = Knows();
      EXPECT_EQ(socket.Get(url, Patience), "a page") << url << request;
    }
    socket.AuthenticationRequired = Knows("wrong");
    EXPECT_NE(socket.Get(url, Patience), "a page") << url;
    EXPECT_EQ(socket.HTTPStatusCode(), 401) << url;
  }
}

TEST_F(ServersTest, SquidPassesRequestsOnAndOpensTunnels) {
  const Nginx nginx(folder.Path(), valid);
  const Squid squid(folder.Path(), "squid", Squid::Demand::Nothing);
  HTTPSecureSocket socket(network);
  socket.HTTPProxyAddress = "localhost";
  socket.HTTPProxyPort = squid.Port();
  EXPECT_EQ(socket.Get(nginx.Tls13("/page"), Patience), "a page");
  EXPECT_EQ(socket.Get(nginx.Tls12("/closed"), Patience), "a page");
  socket.SetSecure(false);
  EXPECT_EQ(socket.Get(nginx.Plain("/page"), Patience), "a page");
  EXPECT_NE(socket.PageHeaders()->Value("Via"), "");
}

TEST_F(ServersTest, SquidTakesPasswordsAndRefuses) {
  const Nginx nginx(folder.Path(), valid);
  const std::pair<Squid::Demand, std::int64_t> rows[] = {{Squid::Demand::Basic, 407},
                                                         {Squid::Demand::Digest, 407},
                                                         {Squid::Demand::TheImpossible, 403}};
  int number = 0;
  for (const auto& [demand, refusal] : rows) {
    const Squid squid(folder.Path(), "squid" + Str(++number), demand);
    HTTPSecureSocket socket(network);
    socket.HTTPProxyAddress = "localhost";
    socket.HTTPProxyPort = squid.Port();
    EXPECT_NE(socket.Get(nginx.Tls13("/page"), Patience), "a page");
    EXPECT_EQ(socket.HTTPStatusCode(), refusal);
    socket.ProxyAuthenticationRequired = Knows("wrong");
    EXPECT_NE(socket.Get(nginx.Tls13("/page"), Patience), "a page");
    EXPECT_EQ(socket.HTTPStatusCode(), refusal);
    if (demand == Squid::Demand::TheImpossible) continue;
    socket.ProxyAuthenticationRequired = Knows();
    socket.AuthenticationRequired = Knows("secret", 2);
    // The second answer of the proxy's is for the tunnel of the request that answers the server.
    socket.ProxyAuthenticationRequired = Knows("secret", 2);
    EXPECT_EQ(socket.Get(nginx.Tls13("/basic"), Patience), "a page");
    EXPECT_TRUE(socket.Secure());
  }
}

}  // namespace
}  // namespace vintrace::test
