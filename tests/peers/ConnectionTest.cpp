// The client on real connections: with a server that keeps to a script, and with those and the
// proxy that people use.

#include <openssl/ssl.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "peers/PeerFixture.h"
#include "peers/Servers.h"
#include "peers/TlsServer.h"
#include "platform/qt/CertificateNames.h"

namespace vintrace::test {
namespace {

using Lines = std::vector<std::string>;
using ConnectionTest = PeerTest;

const String Headers = "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\n\r\n";

TEST_F(ConnectionTest, OnlyNewTLSAndATrustedCertificateForTheHostAreTaken) {
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
      {"self-signed"},
      {"unknown root"},
      {"expired", {.fromDay = -10, .toDay = -1}},
      {"not yet valid", {.fromDay = 1, .toDay = 10}},
      {"wrong host", {.commonName = "a.example", .alternativeNames = "DNS:a.example"}},
      {"common name alone is right", {.alternativeNames = ""}},
      {"common name right, alternative name wrong", {.alternativeNames = "DNS:a.example"}},
      {"address as a name", {.alternativeNames = "DNS:127.0.0.1"}, "127.0.0.1"},
      {"wrong purpose", {.usage = "clientAuth"}},
  };
  for (const auto& [name, design, host, error, newest] : rows) {
    const Authority& signer = name == "unknown root" ? stranger : authority;
    TlsServer server(name == "self-signed" ? signer.SelfSigned(name) : signer.Sign(name, design),
                     newest);
    server.Expect({.pieces = {Headers + "page"}});
    HTTPSecureSocket socket(network);
    const bool good = error == SocketError::None;
    EXPECT_EQ(socket.Get(server.URL(host), Patience), good ? "page" : "") << name;
    EXPECT_EQ(socket.ErrorCode(), static_cast<int>(error)) << name;
    EXPECT_EQ(server.Requests() == Lines{""}, !good) << name;
  }
}

TEST_F(ConnectionTest, HoweverAConnectionEndsItEndsOnceAndWhatCameIsThere) {
  using enum TlsServer::End;
  using enum TlsServer::Moment;
  const struct {
    Lines pieces;
    TlsServer::Moment moment;
    String story;
  } rows[] = {
      {{}, BeforeHandshake, "error"},
      {{}, InHandshake, "error"},
      {{}, AfterReply, "+"},
      {{Headers}, AfterReply, "+"},
      {{"HTTP/1.0 200"}, AfterReply, "+HTTP/1.0 200"},
      {{Headers + "page", "more"}, AfterReply, "+pagemore"},
  };
  for (const auto end : {CloseNotify, HeldOpen, Fin, Reset}) {
    for (const auto& [pieces, moment, story] : rows) {
      TlsServer server(valid);
      server.Expect({.pieces = pieces, .end = end, .moment = moment});
      HTTPSecureSocket socket(network);
      Lines seen;
      socket.Error = [&](auto&&...) { seen.emplace_back("error"); };
      socket.PageReceived = [&](auto&&, auto, auto&&, auto page) { seen.push_back('+' + page); };
      socket.Get(server.URL());
      EXPECT_TRUE(QTest::qWaitFor([&] { return !seen.empty(); }, 1000 * Patience));
      QTest::qWait(5);
      ASSERT_EQ(seen.size(), 1U) << story;
      // A connection that is broken off takes along what hasn't been read.
      EXPECT_TRUE(end == Reset || seen.front() == story) << seen.front() << story;
      EXPECT_FALSE(socket.IsConnected());
    }
  }
}

TEST_F(ConnectionTest, WhatIsNotThereIsAnErrorOfItsOwn) {
  TlsServer silent(valid);
  silent.Expect({.pieces = {Headers}, .pause = std::chrono::seconds(2)});
  const std::tuple<String, std::int64_t, int> rows[] = {
      {silent.URL(), 1, HTTPSecureSocket::TimedOut},
      {"https://localhost:1/", Patience, 104},
      {"https://localhost:70000/", Patience, 107},
      {"", Patience, 103}};
  for (const auto& [url, timeout, error] : rows) {
    HTTPSecureSocket socket(network);
    EXPECT_EQ(socket.Get(url, timeout), "");
    EXPECT_EQ(socket.ErrorCode(), error) << url;
  }
}

TEST_F(ConnectionTest, WhatAProxySendsBehindItsAnswerIsNeverAPage) {
  for (const bool together : {true, false}) {
    QTcpServer proxy;
    proxy.listen(QHostAddress::LocalHost);
    QObject::connect(&proxy, &QTcpServer::newConnection, [&] {
      QTcpSocket* client = proxy.nextPendingConnection();
      const auto answer = [client, together] {
        client->write("HTTP/1.0 200 OK\r\n\r\n");
        if (!together) client->flush();
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
}

TEST_F(ConnectionTest, ASocketMayBeDestroyedInEveryState) {
  for (int turns = 0; turns < 40; ++turns) {
    TlsServer server(valid);
    HTTPSecureSocket socket(network);
    socket.Get(server.URL());
    QTest::qWait(turns / 3);  // Within these milliseconds all of it is over.
  }
  network.DoEvents();
}

/// Knows the user and this password, and gives it so many times.
HTTPSecureSocket::Question Knows(const String& secret, int times) {
  const auto left = std::make_shared<int>(times);
  return [secret, left](const auto&, const auto&, String& userName, String& password) {
    userName = "user";
    password = secret;
    return (*left)-- > 0;
  };
}

TEST_F(ConnectionTest, NginxServesEveryKindOfPage) {
  const Server nginx(folder.Path(), valid);
  HTTPSecureSocket socket(network);
  const std::tuple<String, String, int> rows[] = {
      {"/page", "a page", 200}, {"/closed", "a page", 200}, {"/moved", "301", 301}};
  for (const auto& [path, page, status] : rows) {
    EXPECT_NE(socket.Get(nginx.Tls13(path), Patience).find(page), String::npos) << path;
    EXPECT_EQ(socket.HTTPStatusCode(), status) << path;
    EXPECT_EQ(socket.ErrorCode(), 0) << path;
  }
  EXPECT_EQ(socket.GetHeaders(nginx.Tls13("/page"), Patience)->Value("Content-Length"), "6");
  EXPECT_EQ(socket.Get(nginx.Tls13("/large"), Patience), String(50 << 20, '\0'));
  const FolderItem file = folder.Item("download");
  EXPECT_TRUE(socket.Get(nginx.Tls13("/large"), file, 60));
  EXPECT_EQ(std::filesystem::file_size(file.NativePath()), 50U << 20);
  socket.SetRequestContent("the body", "text/x");
  socket.SetRequestHeader("X", "1\r\nX-Body: 2");
  EXPECT_EQ(socket.Post(nginx.Tls13("/echo"), Patience), "text/x|1X-Body: 2|the body");
}

TEST_F(ConnectionTest, PasswordsOpenPagesAndProxiesAndWrongOnesDoNot) {
  const Server nginx(folder.Path(), valid);
  const Server apache(folder.Path(), valid, "apache");
  const Server basic(folder.Path(), valid, "basic");
  const Server digest(folder.Path(), valid, "digest");
  for (const int proxy : {0, int{basic.Port()}, int{digest.Port()}}) {
    HTTPSecureSocket socket(network);
    socket.HTTPProxyAddress = proxy == 0 ? "" : "localhost";
    socket.HTTPProxyPort = proxy;
    const auto status = [&](const String& url, const String& password, const String& proxys) {
      socket.AuthenticationRequired = Knows(password, 1);
      // The second answer of the proxy's is for the tunnel of the request that answers the server.
      socket.ProxyAuthenticationRequired = Knows(proxys, 2);
      socket.Get(url, Patience);
      return socket.HTTPStatusCode();
    };
    for (const auto& url : {nginx.Tls13("/basic"), apache.Tls13("/page?a=b&c=d")}) {
      EXPECT_EQ(status(url, "secret", "secret"), 200) << url << proxy;
      EXPECT_EQ(status(url, "wrong", "secret"), 401) << url << proxy;
      EXPECT_EQ(status(url, "secret", "wrong"), proxy == 0 ? 200 : 407) << url << proxy;
    }
    socket.SetSecure(false);
    EXPECT_EQ(status("http://localhost:1/", "", "wrong"), proxy == 0 ? 0 : 407);
    EXPECT_EQ(status("http://localhost:1/", "", "secret"), proxy == 0 ? 0 : 503);
  }
}

TEST(MatchesName, TakesAWildcardForOneWholeLabel) {
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
