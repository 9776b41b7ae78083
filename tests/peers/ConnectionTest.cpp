// The client on real connections: to a scripted server, to nginx, and through squid.

#include <gtest/gtest.h>
#include <netdb.h>
#include <openssl/ssl.h>
#include <sys/socket.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "online/http/HTTPSecureSocket.h"
#include "peers/PeerFixture.h"
#include "peers/Servers.h"
#include "platform/net/qt/CertificateNames.h"

/// In place of the C library's: the host "two.example" has two addresses, the others as usual.
extern "C" int getaddrinfo_a(int /*mode*/, gaicb** requests, int /*count*/, sigevent* /*signal*/) {
  gaicb& request = **requests;
  const bool hasTwo = std::string_view(request.ar_name) == "two.example";
  const char* const first = hasTwo ? "127.0.0.2" : request.ar_name;
  request.__return = getaddrinfo(first, nullptr, request.ar_request, &request.ar_result);
  if (hasTwo) {
    getaddrinfo("127.0.0.1", nullptr, request.ar_request, &request.ar_result->ai_next);
  }
  return 0;
}

namespace vintrace::test {
namespace {

using http::HTTPSecureSocket;

constexpr std::int64_t Patience = 15;  // Seconds. Awaited events normally come within one.

using ConnectionTest = PeerTest;

TEST_F(ConnectionTest, AcceptsOnlyTLS12OrNewerAndATrustedCertificateOfTheHost) {
  const Authority stranger(folder.Path(), "Stranger");
  const struct {
    std::string name;
    CertificateDesign design = {};
    std::string host = "localhost";
    SocketError error = SocketError::NotTrusted;
    int newest = 0;
  } rows[] = {
      {"valid for a name", {}, "localhost", SocketError::None},
      {"valid for an address", {}, "127.0.0.1", SocketError::None},
      {"TLS 1.2", {}, "localhost", SocketError::None, TLS1_2_VERSION},
      {"TLS 1.1", {}, "localhost", SocketError::NotSecure, TLS1_1_VERSION},
      {"unknown root"},
      {"expired", {.toDay = -1}},
      {"wrong host", {.alternativeNames = "DNS:a.example"}},
      {"common name alone is right", {.alternativeNames = ""}},
      {"address as a name", {.alternativeNames = "DNS:127.0.0.1"}, "127.0.0.1"},
      {"wrong purpose", {.usage = "clientAuth"}},
  };
  for (const auto& [name, design, host, error, newest] : rows) {
    const Authority& signer = name == "unknown root" ? stranger : authority;
    TlsServer server(signer.Sign(name, design), newest);
    server.Expect({.pieces = {Headers + "page"}});
    HTTPSecureSocket socket(network);
    const bool good = error == SocketError::None;
    EXPECT_EQ(socket.Get(server.URL(host), Patience), good ? "page" : "") << name;
    EXPECT_EQ(socket.ErrorCode(), static_cast<int>(error)) << name;
    EXPECT_EQ(server.Requests() == Lines{""}, !good) << name;
  }
}

TEST_F(ConnectionTest, EveryKindOfDisconnectRaisesOneEventWithTheReceivedData) {
  using enum TlsServer::End;
  const struct {
    Lines pieces;
    String story;
    bool shakesHands = true;
  } rows[] = {
      {{}, "error", false},
      {{}, "+"},
      {{"HTTP/1.0 200"}, "+HTTP/1.0 200"},
      {{Headers + "page", "more"}, "+pagemore"},
  };
  for (const auto end : {CloseNotify, Fin, Reset}) {
    for (const auto& [pieces, story, shakesHands] : rows) {
      TlsServer server(valid);
      server.Expect({.pieces = pieces, .end = end, .shakesHands = shakesHands});
      HTTPSecureSocket socket(network);
      Lines seen;
      socket.Error = [&](auto&&...) { seen.emplace_back("error"); };
      socket.PageReceived = [&](auto&&, auto, auto&&, auto page) { seen.push_back('+' + page); };
      socket.Get(server.URL());
      EXPECT_TRUE(QTest::qWaitFor([&] { return !seen.empty(); }, 1000 * Patience));
      QTest::qWait(5);
      ASSERT_EQ(seen.size(), 1U) << story;
      // A reset discards received bytes that have not been read.
      EXPECT_TRUE(end == Reset || seen.front() == story) << seen.front() << story;
      EXPECT_FALSE(socket.IsConnected());
    }
  }
}

TEST_F(ConnectionTest, EachKindOfConnectionFailureHasItsOwnErrorCode) {
  QTcpServer silent;
  silent.listen(QHostAddress::LocalHost);
  const std::tuple<String, std::int64_t, int> rows[] = {
      {"https://127.0.0.1:" + Str(silent.serverPort()) + "/", 1, HTTPSecureSocket::TimedOut},
      {"https://localhost:1/", Patience, 104},
      {"https://localhost:70000/", Patience, 107},
      {"", Patience, 103}};
  for (const auto& [url, timeout, error] : rows) {
    HTTPSecureSocket socket(network);
    EXPECT_EQ(socket.Get(url, timeout), "");
    EXPECT_EQ(socket.ErrorCode(), error) << url;
  }
}

TEST_F(ConnectionTest, ASilentFirstAddressDoesNotHideTheSecond) {
  TlsServer server(authority.Sign("two", {.alternativeNames = "DNS:two.example"}));
  server.Expect({.pieces = {Headers + "page"}});
  // A listener with a full backlog drops further attempts.
  QTcpServer silent;
  silent.setListenBacklogSize(0);
  ASSERT_TRUE(silent.listen(QHostAddress("127.0.0.2"), server.Port()));
  QTcpSocket filling[4];
  for (auto& each : filling) each.connectToHost("127.0.0.2", server.Port());
  EXPECT_FALSE(filling[3].waitForConnected(100));
  HTTPSecureSocket socket(network);
  EXPECT_EQ(socket.Get(server.URL("two.example"), Patience), "page");
}

TEST_F(ConnectionTest, AReplyToABodyThatTheServerDoesNotReadArrives) {
  TlsServer server(valid);
  HTTPSecureSocket socket(network);
  socket.SetRequestContent(String(3 << 20, 'x'), "text/plain");
  for (int turns = 0; turns < 20; ++turns) {
    server.Expect({.pieces = {Headers + "too long"}, .end = TlsServer::End::Fin});
    EXPECT_EQ(socket.Post(server.URL(), Patience), "too long");
    server.Requests();
  }
}

TEST_F(ConnectionTest, OtherSocketsAreServedDuringAWaitOnlyIfItYields) {
  QTcpServer silent;
  silent.listen(QHostAddress::LocalHost);
  for (const bool yields : {true, false}) {
    TlsServer server(valid);
    server.Expect({.pieces = {Headers + "page"}});
    HTTPSecureSocket waiting(network);
    HTTPSecureSocket other(network);
    String page;
    other.PageReceived = [&](auto&&, auto, auto&&, auto&& content) { page = content; };
    waiting.Yield = yields;
    other.Get(server.URL());
    waiting.Get("https://127.0.0.1:" + Str(silent.serverPort()) + "/", 1);
    EXPECT_EQ(page, yields ? "page" : "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return page == "page"; }, 1000 * Patience));
  }
}

TEST_F(ConnectionTest, DataThatAProxySendsAfterItsReplyIsNeverAPage) {
  QTcpServer proxy;
  proxy.listen(QHostAddress::LocalHost);
  QObject::connect(&proxy, &QTcpServer::newConnection, [&] {
    QTcpSocket* client = proxy.nextPendingConnection();
    const auto answer = [client] {
      client->write("HTTP/1.0 200 OK\r\n\r\n");
      client->flush();
      client->write("HTTP/1.0 200 OK\r\nContent-length: 4\r\n\r\nevil");
    };
    QObject::connect(client, &QTcpSocket::readyRead, client, answer, Qt::SingleShotConnection);
  });
  HTTPSecureSocket socket(network);
  socket.HTTPProxyAddress = "127.0.0.1";
  socket.HTTPProxyPort = proxy.serverPort();
  EXPECT_EQ(socket.Get("https://localhost/", 2), "");
  EXPECT_NE(socket.ErrorCode(), 0);
  EXPECT_EQ(socket.HTTPStatusCode(), 0);
}

TEST_F(ConnectionTest, ASocketMayBeDestroyedInEveryState) {
  for (int turns = 0; turns < 40; ++turns) {
    TlsServer server(valid);
    HTTPSecureSocket socket(network);
    socket.Get(server.URL());
    QTest::qWait(turns / 3);  // The longest wait outlasts a whole request.
  }
  network.DoEvents();
}

TEST_F(ConnectionTest, NginxServesPagesAndTakesBodies) {
  const Server nginx(folder.Path(), valid);
  HTTPSecureSocket socket(network);
  EXPECT_EQ(socket.GetHeaders(nginx.Tls13("/page"), Patience)->Value("Content-Length"), "6");
  EXPECT_EQ(socket.Get(nginx.Tls13("/large"), Patience), String(50 << 20, '\0'));
  const FolderItem file = folder.Item("download");
  EXPECT_TRUE(socket.Get(nginx.Tls13("/large"), file, 60));
  EXPECT_EQ(std::filesystem::file_size(file.NativePath()), 50U << 20);
  socket.SetRequestContent("the body", "text/x");
  EXPECT_EQ(socket.Post(nginx.Tls13("/echo"), Patience), "text/x|the body");
}

TEST_F(ConnectionTest, OnlyTheRightPasswordsOpenPagesAndProxies) {
  const Server nginx(folder.Path(), valid);
  const Server squid(folder.Path(), valid, "squid");
  HTTPSecureSocket socket(network);
  int answers = 0;
  const auto knows = [&](const String& secret) {
    return [&answers, secret](auto&&, auto&&, String& userName, String& password) {
      userName = "user";
      password = secret;
      return answers-- > 0;
    };
  };
  const auto status = [&](const String& url, const String& servers, const String& proxys) {
    answers = 3;  // The proxy asks again for the tunnel of the second request to the server.
    socket.AuthenticationRequired = knows(servers);
    socket.ProxyAuthenticationRequired = knows(proxys);
    socket.Get(url, Patience);
    return socket.HTTPStatusCode();
  };
  const String page = nginx.Tls13("/basic");
  EXPECT_EQ(status(page, "secret", ""), 200);
  socket.HTTPProxyAddress = "localhost";
  socket.HTTPProxyPort = squid.Port();
  EXPECT_EQ(status(page, "secret", "secret"), 200);
  EXPECT_EQ(status(page, "wrong", "secret"), 401);
  EXPECT_EQ(status(page, "secret", "wrong"), 407);
  socket.SetSecure(false);
  EXPECT_EQ(status("http://localhost:1/", "", "secret"), 503);
}

TEST(MatchesName, AWildcardMatchesExactlyOneWholeLabel) {
  const auto matches = [](const QString& pair) {
    return qt::MatchesName(pair.section(' ', 0, 0), pair.section(' ', 1));
  };
  for (const char* pair :
       {"a.example A.Example.", "xn--wgv71a.example 日本.example", "*.b.example a.b.example"}) {
    EXPECT_TRUE(matches(pair)) << pair;
  }
  for (const char* pair :
       {"*.b.example b.example", "*.b.example x.a.b.example", "*.b.example .b.example",
        "*.example a.example", "* a", " ", "a*.b.example ab.b.example", "a.example a.example.evil",
        "loc\xC2\xAAlhost localhost"}) {
    EXPECT_FALSE(matches(pair)) << pair;
  }
}

}  // namespace
}  // namespace vintrace::test
