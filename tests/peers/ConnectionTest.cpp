// The client on real connections: with a server that keeps to a script, and with that and the proxy
// that people use; and from the program's start and its menu item to the bytes on the wire.

#include <gtest/gtest.h>
#include <openssl/ssl.h>

#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "online/HTTPSecureSocket.h"
#include "peers/Servers.h"
#include "peers/TlsServer.h"
#include "platform/qt/CertificateNames.h"
#include "platform/qt/QtNetwork.h"
#include "shell/Startup.h"
#include "support/Environment.h"
#include "support/ScriptedHost.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

using online::HTTPSecureSocket;
using Lines = std::vector<std::string>;

constexpr std::int64_t Patience = 15;  // Seconds; what is awaited comes within one.

const String Headers = "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\n\r\n";

/// A network whose root authority is trusted.
class ConnectionTest : public testing::Test {
 protected:
  ConnectionTest() {
    static const auto before = QSslConfiguration::defaultConfiguration();
    auto configuration = before;
    configuration.addCaCertificates(QString::fromStdString(authority.Root()));
    QSslConfiguration::setDefaultConfiguration(configuration);
  }

  const TemporaryFolder folder;
  const Environment dataHome{"XDG_DATA_HOME", folder.Path().c_str()};
  const Authority authority{folder.Path(), "Root"};
  const Certificate valid = authority.Sign("valid");
  qt::QtNetwork network;
};

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

TEST_F(ConnectionTest, HoweverAConnectionEndsItEndsOnceAndWhatCameIsThere) {
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
    QTest::qWait(turns / 3);  // Within these milliseconds all of it is over.
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

TEST_F(ConnectionTest, PasswordsOpenPagesAndProxiesAndWrongOnesDoNot) {
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
    answers = 3;  // The proxy asks again for the tunnel of the request that answers the server.
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

const String Notice = "Vintrace CS Ver.1.20";
const String Latest = "最新版を使用しています。";
const String UpdateRequest =
    "POST /www/ssl/vcheck.php HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: HOST\r\n"
    "Content-type: application/x-www-form-urlencoded\r\nContent-length: 32\r\n\r\n"
    "app%5Fid=3&ver=120&regi=Vintrace";
const String Failed = "通信に障害があり、確認できませんでした。";

/// A scripted desktop with a real network.
class OnlineHost : public ScriptedHost {
 public:
  vintrace::Network& Network() override { return real_; }

 private:
  qt::QtNetwork real_;
};

/// Starts the program and chooses the menu item. `answer`: what the user is to be told there;
/// the notice, which comes at the start too, or a message.
void ExpectAnswer(const String& service, const String& answer) {
  const Environment host("VINTRACE_TEST_SERVICE", service.c_str());
  OnlineHost desktop;
  _Main();
  const Lines notices = answer == Notice ? Lines{answer} : Lines{};
  EXPECT_EQ(desktop.Titles(), notices);
  EXPECT_EQ(desktop.story.size(), 2 * notices.size()) << "the window, and that it is shown";
  desktop.story.clear();
  EXPECT_TRUE(desktop.Choose("upchk"));
  EXPECT_EQ(desktop.Titles(), notices) << "one notice, however often it is shown";
  EXPECT_EQ(desktop.story, Lines{answer == Notice ? "window" : "message: " + answer});
}

TEST_F(ConnectionTest, AnUpdateCheckSendsTheseBytesAndTellsWhatTheReplyMeans) {
  const std::pair<Lines, String> rows[] = {
      {{Headers + "true"}, Notice},
      {{Headers + "f", "a", "l", "se"}, Latest},
      {{Headers + "true\n"}, Failed},
      {{Headers}, Failed},
      {{"HTTP/1.0 404 Not Found\r\n\r\ntrue"}, Notice},
      {{"HTTP/1.0 302 Found\r\nLocation: /path\r\n\r\nmoved"}, Failed},
  };
  for (const auto& [pieces, answer] : rows) {
    SCOPED_TRACE(pieces.front());
    TlsServer server(valid);
    for (int exchange = 0; exchange < 3; ++exchange) server.Expect({.pieces = pieces});
    const String service = "localhost:" + Str(server.Port());
    ExpectAnswer(service, answer);
    const String update = ReplaceAll(UpdateRequest, "HOST", service);
    const String report =
        ReplaceAll(ReplaceAll(update, "vcheck", "kcheck"), "=Vintrace", "=Vintrase");
    EXPECT_EQ(server.Requests(), (Lines{update, report, update}));
  }
}

TEST_F(ConnectionTest, WithoutAServiceAnUpdateCheckFailsAndTheProgramGoesOn) {
  ExpectAnswer("localhost:1", Failed);
  ExpectAnswer("no-such-host.invalid", Failed);
  ScriptedHost desktop;
  _Main();
  desktop.Choose("upchk");
  EXPECT_EQ(desktop.story, Lines{"message: " + Failed});
  EXPECT_EQ(desktop.network.wire, Lines{}) << "a build for a distributor calls nobody";
}

}  // namespace
}  // namespace vintrace::test
