// The client on real connections, with a server that keeps to a script: whom it trusts, and how
// connections end.

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "peers/PeerFixture.h"
#include "peers/TlsServer.h"
#include "platform/qt/CertificateNames.h"
#include "support/Replies.h"

namespace vintrace::test {
namespace {

using End = TlsServer::End;
using Moment = TlsServer::Moment;

using ConnectionTest = PeerTest;

const String WholeReply = "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\n\r\npage";

TEST_F(ConnectionTest, ARequestArrivesAndItsReplyInWhateverPiecesItIsSent) {
  TlsServer server(valid);
  const String request =
      "POST /path HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: localhost:" +
      Str(server.Port()) + "\r\nContent-type: a/b\r\nContent-length: 4\r\n\r\nbody";
  for (const auto& [bytes, page, status] : Replies) {
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
      server.Expect({.pieces = {bytes.substr(0, cut), bytes.substr(cut)}});
      HTTPSecureSocket socket(network);
      socket.SetRequestContent("body", "a/b");
      EXPECT_EQ(socket.Post(server.URL(), Patience), page) << bytes << cut;
      EXPECT_EQ(socket.HTTPStatusCode(), status) << bytes << cut;
      EXPECT_EQ(socket.ErrorCode(), 0);
      EXPECT_EQ(server.AwaitRequest(), request);
    }
  }
}

TEST_F(ConnectionTest, OnlyACertificateForTheHostThatTheSystemTrustsIsTaken) {
  const Authority stranger(folder.Path(), "Stranger");
  const struct {
    std::string name;
    Certificate certificate;
    std::string host = "localhost";
    SocketError error = SocketError::NotTrusted;
  } rows[] = {
      {"valid", valid, "localhost", SocketError::None},
      {"valid, by address", valid, "127.0.0.1", SocketError::None},
      {"self-signed", authority.SelfSigned("self")},
      {"unknown root", stranger.Sign("unknown")},
      {"expired", authority.Sign("expired", {.fromDay = -10, .toDay = -1})},
      {"not yet valid", authority.Sign("future", {.fromDay = 1, .toDay = 10})},
      {"wrong host",
       authority.Sign("host", {.commonName = "a.example", .alternativeNames = "DNS:a.example"})},
      {"common name alone is right", authority.Sign("common", {.alternativeNames = ""})},
      {"common name is right, alternative name wrong",
       authority.Sign("both", {.alternativeNames = "DNS:a.example"})},
      {"address as a name", authority.Sign("address", {.alternativeNames = "DNS:127.0.0.1"}),
       "127.0.0.1"},
      {"wildcard over all",
       authority.Sign("all", {.commonName = "*", .alternativeNames = "DNS:*"})},
      {"wrong purpose", authority.Sign("purpose", {.usage = "clientAuth"})},
  };
  for (const auto& [name, certificate, host, error] : rows) {
    TlsServer server(certificate);
    server.Expect({.pieces = {WholeReply}});
    HTTPSecureSocket socket(network);
    const bool good = error == SocketError::None;
    EXPECT_EQ(socket.Get(server.URL(host), Patience), good ? "page" : "") << name;
    EXPECT_EQ(socket.ErrorCode(), static_cast<int>(error)) << name;
    const auto seen = server.AwaitRequest();
    ASSERT_TRUE(seen) << name;
    EXPECT_EQ(!seen->empty(), good) << name;
  }
}

TEST_F(ConnectionTest, OldTLSIsNotSpoken) {
  TlsServer server(valid);
  server.SpeakOldTLS();
  server.Expect({.pieces = {WholeReply}});
  HTTPSecureSocket socket(network);
  EXPECT_EQ(socket.Get(server.URL(), Patience), "");
  EXPECT_EQ(socket.ErrorCode(), static_cast<int>(SocketError::NotSecure));
  EXPECT_EQ(server.AwaitRequest(), "");
}

TEST_F(ConnectionTest, HoweverAConnectionEndsItEndsOnceAndWhatCameIsThere) {
  const String headers = WholeReply.substr(0, 20);
  for (const End end : {End::CloseNotify, End::HeldOpen, End::Fin, End::Reset}) {
    const struct {
      std::vector<std::string> pieces;
      Moment moment;
      String page;
      bool wasMade;
    } rows[] = {
        {{}, Moment::BeforeHandshake, "", false},
        {{}, Moment::InHandshake, "", false},
        {{}, Moment::BeforeRequest, "", true},
        {{}, Moment::AfterReply, "", true},
        {{"HTTP/1.0 200 OK\r\n\r\n"}, Moment::AfterReply, "", true},
        {{headers}, Moment::AfterReply, headers, true},
        {{WholeReply, "more"}, Moment::AfterReply, "pagemore", true},
    };
    for (const auto& [pieces, moment, page, wasMade] : rows) {
      TlsServer server(valid);
      server.Expect({.pieces = pieces, .end = end, .moment = moment});
      HTTPSecureSocket socket(network);
      std::vector<String> story;
      socket.Error = [&](int) { story.emplace_back("error"); };
      socket.PageReceived = [&](const auto&, auto, const auto&, const String& content) {
        story.push_back("page " + content);
      };
      socket.Get(server.URL());
      EXPECT_TRUE(QTest::qWaitFor([&] { return !story.empty(); }, 1000 * Patience));
      QTest::qWait(5);
      ASSERT_EQ(story.size(), 1U) << static_cast<int>(end) << static_cast<int>(moment);
      // A connection that is broken off takes along what hasn't been read.
      if (end != End::Reset) {
        EXPECT_EQ(story.front(), wasMade ? "page " + page : "error")
            << static_cast<int>(end) << static_cast<int>(moment);
      }
      EXPECT_FALSE(socket.IsConnected());
    }
  }
}

TEST_F(ConnectionTest, SilenceIsLimitedAndSlownessIsNot) {
  TlsServer server(valid);
  server.Expect(
      {.pieces = {"HTTP/1.0 200 OK\r\n\r\na", "b", "c"}, .pause = std::chrono::milliseconds(600)});
  server.Expect({.pieces = {WholeReply}, .pause = std::chrono::seconds(2)});
  HTTPSecureSocket socket(network);
  EXPECT_EQ(socket.Get(server.URL(), 1), "abc");
  EXPECT_EQ(socket.Get(server.URL(), 1), "");
  EXPECT_EQ(socket.ErrorCode(), -1);
}

TEST_F(ConnectionTest, WhatIsNotThereIsAnErrorOfItsOwn) {
  const std::pair<String, SocketError> rows[] = {
      {"https://localhost:1/", SocketError::Refused},
      {"https://no-such-host.invalid/", SocketError::NameNotFound},
      {"https://localhost:70000/", SocketError::InvalidPort},
      {"", SocketError::NameNotFound},
  };
  for (const auto& [url, error] : rows) {
    HTTPSecureSocket socket(network);
    EXPECT_EQ(socket.Get(url, Patience), "");
    EXPECT_EQ(socket.ErrorCode(), static_cast<int>(error)) << url;
  }
}

TEST_F(ConnectionTest, WhatAProxySendsBehindItsAnswerIsNeverAPage) {
  for (const bool together : {true, false}) {
    QTcpServer proxy;
    proxy.listen(QHostAddress::LocalHost);
    QObject::connect(&proxy, &QTcpServer::newConnection, [&] {
      QTcpSocket* client = proxy.nextPendingConnection();
      QObject::connect(
          client, &QTcpSocket::readyRead, client,
          [client, together] {
            client->write("HTTP/1.0 200 OK\r\n\r\n");
            if (!together) client->flush();
            client->write("HTTP/1.0 200 OK\r\nContent-length: 4\r\n\r\nevil");
          },
          Qt::SingleShotConnection);
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
    server.Expect({.pieces = {WholeReply}});
    auto socket = std::make_unique<HTTPSecureSocket>(network);
    socket->Get(server.URL());
    QTest::qWait(turns / 3);  // Within these milliseconds all of it is over.
    socket.reset();
    network.DoEvents();
  }
}

TEST(MatchesName, TakesAWildcardForOneWholeLabel) {
  const struct {
    const char *pattern, *name;
    bool matches;
  } rows[] = {
      {"a.example", "A.Example.", true},
      {"*.b.example", "a.b.example", true},
      {"*.b.example", "b.example", false},
      {"*.b.example", "x.a.b.example", false},
      {"*.example", "a.example", false},
      {"*", "a", false},
      {"a*.b.example", "ab.b.example", false},
      {"*.b.example", ".b.example", false},
      {"", "", false},
      {"a.example", "a.example.evil", false},
      {"loc\xC2\xAAlhost", "localhost", false},
      {"xn--wgv71a.example", "日本.example", true},
  };
  for (const auto& [pattern, name, matches] : rows) {
    EXPECT_EQ(qt::MatchesName(QString::fromUtf8(pattern), QString::fromUtf8(name)), matches)
        << pattern << ' ' << name;
  }
}

}  // namespace
}  // namespace vintrace::test
