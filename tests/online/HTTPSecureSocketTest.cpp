// The client, byte for byte, on a network without a wire.

#include "online/HTTPSecureSocket.h"

#include <gtest/gtest.h>

#include "platform/qt/QtNetwork.h"
#include "support/Replies.h"
#include "support/ScriptedNetwork.h"
#include "support/TemporaryFolder.h"

namespace vintrace::online {
namespace {

using Lines = std::vector<String>;
using Peer = test::ScriptedNetwork::Peer;

const String URL = "https://a.example/b?c=d";
const String Headers = "Accept: */*\r\nAccept-Language: en\r\nHost: a.example";

/// A peer that answers one request, in these pieces, and ends.
Peer Answering(Lines pieces) { return {.replies = {std::move(pieces)}}; }

class HTTPSecureSocketTest : public testing::Test {
 protected:
  /// Notes the events of the socket.
  void Listen(HTTPSecureSocket& socket) {
    socket.Connected = [this] { story.emplace_back("connected"); };
    socket.Error = [this](int code) { story.push_back("error " + Str(code)); };
    socket.HeadersReceived = [this](const auto& headers, std::int64_t status) {
      story.push_back("headers " + Str(status) + ' ' + Str(headers->Count()));
    };
    socket.ReceiveProgress = [this](std::int64_t bytes, std::int64_t total, const String&) {
      progress = Str(bytes) + '/' + Str(total);
    };
    socket.PageReceived = [this](const String& url, std::int64_t status, const auto& /*headers*/,
                                 const String& content) {
      story.push_back("page " + url + ' ' + Str(status) + ' ' + content);
    };
    socket.DownloadComplete = [this](const String& url, std::int64_t status,
                                     const auto& /*headers*/, const FolderItem& file) {
      story.push_back("file " + url + ' ' + Str(status) + ' ' + file.Name());
    };
  }

  test::ScriptedNetwork network;
  Lines story;
  String progress;
};

TEST_F(HTTPSecureSocketTest, APostOfAFormIsTheseBytes) {
  network.peers = {Answering({"HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\ntrue"})};
  HTTPSecureSocket socket(network);
  HTTPSecureSocket::Form form;
  form.Set("app_id", "3");
  form.Set("ver", "120");
  form.Set("regi", "a b");
  socket.SetFormData(form);
  EXPECT_EQ(socket.Post(URL, 5), "true");
  EXPECT_EQ(network.wire, (Lines{"a.example:443 tls a.example",
                                 "POST /b?c=d HTTP/1.0\r\n" + Headers +
                                     "\r\nContent-type: application/x-www-form-urlencoded\r\n"
                                     "Content-length: 27\r\n\r\napp%5Fid=3&ver=120&regi=a+b"}));
  EXPECT_EQ(socket.ErrorCode(), 0);
  EXPECT_EQ(socket.HTTPStatusCode(), 200);
  EXPECT_FALSE(socket.IsConnected());
  EXPECT_EQ(socket.requestHeaders->_FormatHTTPHeaders(),
            Headers + "\r\nContent-type: application/x-www-form-urlencoded");
}

TEST_F(HTTPSecureSocketTest, EachKindOfRequestHasItsMethodAndBody) {
  const std::function<void(HTTPSecureSocket&)> requests[] = {
      [](auto& socket) { socket.Get(URL, 5); },
      [](auto& socket) { socket.SetRequestContent("xy", " \t"), socket.Post(URL, 5); },
      [](auto& socket) {
        socket.SetRequestContent(String(1000, 'x'), "a/b "), socket.Post(URL, 5);
      },
      [](auto& socket) { socket.SendRequest("PUT\r\nX: y", "h/\r\nZ: w", 5); },
      [](auto& socket) {
        socket.SetRequestContent("xy", "a/b"), socket.GetHeaders(URL, 5), socket.Post(URL, 5);
      },
      [](auto& socket) { socket.ClearRequestHeaders(), socket.Get("h:8443", 5); },
      [](auto& socket) { socket.requestHeaders.reset(), socket.Get(URL, 5); },
      [](auto& socket) {
        socket.SetRequestHeader("accept", ""), socket.SetRequestHeader("X", "1\r\nY: 2"),
            socket.Get(URL, 5);
      },
  };
  const String texts[] = {
      "GET /b?c=d HTTP/1.0\r\n" + Headers + "\r\n\r\n",
      "POST /b?c=d HTTP/1.0\r\n" + Headers + "\r\nContent-length: 2\r\n\r\nxy",
      "POST /b?c=d HTTP/1.0\r\n" + Headers +
          "\r\nContent-type: a/b \r\nContent-length: 1000\r\n\r\n" + String(1000, 'x'),
      "PUTX: y /Z: w HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: h\r\n\r\n",
      "POST /b?c=d HTTP/1.0\r\n" + Headers + "\r\n\r\n",
      "GET / HTTP/1.0\r\nHost: h:8443\r\n\r\n",
      "GET /b?c=d HTTP/1.0\r\n" + Headers + "\r\n\r\n",
      "GET /b?c=d HTTP/1.0\r\nAccept-Language: en\r\nX: 1Y: 2\r\nHost: a.example\r\n\r\n",
  };
  for (std::size_t i = 0; i < std::size(requests); ++i) {
    network.peers = {Answering({"HTTP/1.0 200 OK\r\n\r\n"}),
                     Answering({"HTTP/1.0 200 OK\r\n\r\n"})};
    HTTPSecureSocket socket(network);
    requests[i](socket);
    EXPECT_EQ(network.wire.back(), texts[i]) << i;
  }
}

TEST_F(HTTPSecureSocketTest, AReplyIsTheSamePageInWhateverPiecesItComes) {
  for (const auto& [bytes, page, status] : test::Replies) {
    Lines whole;
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
      network.peers = {Answering({bytes.substr(0, cut), bytes.substr(cut)}),
                       Answering({bytes.substr(0, cut), bytes.substr(cut)})};
      HTTPSecureSocket socket(network);
      EXPECT_EQ(socket.Get(URL, 5), page) << bytes << cut;
      EXPECT_EQ(socket.HTTPStatusCode(), status) << bytes << cut;
      EXPECT_EQ(socket.ErrorCode(), 0);
      HTTPSecureSocket listened(network);
      story.clear();
      Listen(listened);
      listened.Get(URL);
      network.RunEvents();
      if (cut == 0) whole = story;
      EXPECT_EQ(story, whole) << bytes << cut;
      EXPECT_EQ(story.back(), "page " + (URL + ' ').append(Str(status)).append(" ").append(page));
    }
  }
}

TEST_F(HTTPSecureSocketTest, WithoutBlockingEverythingIsAnEventOfTheLoop) {
  network.peers = {Answering({"HTTP/1.0 200 OK\r\nContent-length: 9\r\n\r\nabc", "def", "ghi"}),
                   {.refuses = SocketError::NotTrusted}};
  HTTPSecureSocket socket(network);
  Listen(socket);
  socket.Get(URL);
  EXPECT_EQ(story, Lines{});
  network.RunEvents();
  EXPECT_EQ(story, (Lines{"connected", "headers 200 1", "page " + URL + " 200 abcdefghi"}));
  EXPECT_EQ(progress, "9/9");
  socket.GetHeaders(URL);
  network.RunEvents();
  EXPECT_EQ(story.back(), "error 110");
}

TEST_F(HTTPSecureSocketTest, AHeadReplyEndsWithTheConnectionAndHasNoPage) {
  network.peers = {Answering({"HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\n"}),
                   {.replies = {{"HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\n"}}, .ends = false}};
  HTTPSecureSocket socket(network);
  Listen(socket);
  EXPECT_EQ(socket.GetHeaders(URL, 5)->Value("content-length"), "5");
  EXPECT_EQ(socket.ErrorCode(), 0);
  EXPECT_EQ(socket.GetHeaders(URL, 5)->Value("content-length"), "5");
  EXPECT_EQ(socket.ErrorCode(), -1);
  EXPECT_EQ(story, Lines{});
}

TEST_F(HTTPSecureSocketTest, ALengthEndsThePageAndSoDoesTooMuch) {
  const std::pair<Lines, String> cases[] = {
      {{"HTTP/1.0 200 OK\r\nContent-Length: 2\r\n\r\nabc"}, "abc"},
      {{"HTTP/1.0 200 OK\r\nContent-Length: 2\r\n\r\n", "ab", "c"}, "ab"},
      {{"HTTP/1.0 200 OK\r\nContent-Length: 9\r\n\r\n", "ab"}, "ab"},
  };
  for (const auto& [pieces, page] : cases) {
    network.peers = {Answering(pieces)};
    HTTPSecureSocket socket(network);
    EXPECT_EQ(socket.Get(URL, 0), page);
    EXPECT_EQ(socket.ErrorCode(), 0);
  }
}

TEST_F(HTTPSecureSocketTest, SilenceEndsTheWaitAndWhatCameStays) {
  HTTPSecureSocket socket(network);
  network.peers = {{.replies = {{"HTTP/1.0 200 OK\r\n\r\nabc"}}, .ends = false}};
  EXPECT_EQ(socket.Get(URL, 5), "abc");
  EXPECT_EQ(socket.ErrorCode(), -1);
  EXPECT_EQ(network.ticks, 302) << "the connection at 0 and the page at 1 begin it anew";
  network.peers = {{.ends = false}};
  EXPECT_EQ(socket.Get(URL, 1), "");
  EXPECT_EQ(socket.ErrorCode(), -1);
  socket.Yield = true;
  network.peers = {{.ends = false}};
  socket.Get(URL, 1);
  EXPECT_EQ(network.wire.back(), "events");
}

TEST_F(HTTPSecureSocketTest, WhatCannotConnectIsAnErrorAtOnce) {
  for (const auto error :
       {SocketError::NameNotFound, SocketError::Refused, SocketError::NotTrusted}) {
    network.peers = {{.refuses = error}};
    HTTPSecureSocket socket(network);
    EXPECT_EQ(socket.Post(URL, 5), "");
    EXPECT_EQ(socket.ErrorCode(), static_cast<int>(error));
  }
  EXPECT_EQ(network.ticks, 0);
}

TEST_F(HTTPSecureSocketTest, HeadersWithoutAnEndAreAnErrorAndTakeNoMemory) {
  for (const String& endless :
       {String(70'000, 'x'), "A: b\r\n" + String(70'000, 'x') + "\r\n\r\nc"}) {
    network.peers = {{.replies = {{endless}}, .ends = false}};
    HTTPSecureSocket socket(network);
    EXPECT_EQ(socket.Get(URL, 5), "");
    EXPECT_EQ(socket.ErrorCode(), HTTPSecureSocket::HeadersTooLong);
    EXPECT_FALSE(socket.IsConnected());
  }
}

TEST_F(HTTPSecureSocketTest, ADownloadGoesIntoItsFile) {
  const test::TemporaryFolder folder;
  const FolderItem file = folder.File("page", "something longer before");
  const auto bytes = [&] { return BinaryStream::Open(file).Read(100); };
  network.peers = {Answering({"HTTP/1.0 200 OK\r\n\r\nab", "cd"}),
                   Answering({"HTTP/1.0 404 No\r\nContent-length: 2\r\n\r\nno"}),
                   {.refuses = SocketError::Refused}};
  HTTPSecureSocket socket(network);
  Listen(socket);
  EXPECT_TRUE(socket.Get(URL, file, 5));
  EXPECT_EQ(bytes(), "abcd");
  socket.Post(URL, file);
  network.RunEvents();
  EXPECT_EQ(bytes(), "no");
  EXPECT_EQ(story.back(), "file " + URL + " 404 page");
  EXPECT_FALSE(socket.Get(URL, file, 5));
  EXPECT_EQ(bytes(), "");

  story.clear();
  for (const String& unusable : {folder.Path().native(), folder.Path().native() + "/missing/x"}) {
    const auto wire = network.wire;
    EXPECT_FALSE(socket.Get(URL, FolderItem(unusable), 0));
    EXPECT_EQ(socket.ErrorCode(), 1);
    socket.Get(URL, FolderItem(unusable));
    EXPECT_EQ(network.wire, wire);
  }
  EXPECT_EQ(story, (Lines{"error 1", "error 1"}));
  network.peers = {Answering({"HTTP/1.0 200 OK\r\n\r\nab", "cd"})};
  EXPECT_FALSE(socket.Get(URL, FolderItem("/dev/full"), 5));
  EXPECT_EQ(socket.ErrorCode(), 1);
  EXPECT_FALSE(socket.IsConnected());
}

TEST_F(HTTPSecureSocketTest, ARequestWithoutTLSGoesToTheProxyWhole) {
  network.peers = {Answering({"HTTP/1.0 200 OK\r\n\r\nx"}),
                   Answering({"HTTP/1.0 200 OK\r\n\r\ny"})};
  HTTPSecureSocket socket(network);
  socket.SetSecure(false);
  socket.HTTPProxyAddress = "proxy";
  socket.HTTPProxyPort = 3128;
  EXPECT_EQ(socket.Get("http://a.example/b", 5), "x");
  socket.HTTPProxyAddress = "";
  EXPECT_EQ(socket.Get("http://a.example/b", 5), "y");
  EXPECT_EQ(network.wire,
            (Lines{"proxy:3128", "GET http://a.example/b HTTP/1.0\r\n" + Headers + "\r\n\r\n",
                   "a.example:443", "GET /b HTTP/1.0\r\n" + Headers + "\r\n\r\n"}));
}

const String Established = "HTTP/1.1 200 Connection established\r\n\r\n";

TEST_F(HTTPSecureSocketTest, ATunnelIsAskedForInTheClearAndEverythingElseGoesThroughTLS) {
  network.peers = {{.replies = {{Established}, {"HTTP/1.0 200 OK\r\n\r\npage"}}},
                   {.replies = {{Established + "injected"}, {"HTTP/1.0 200 OK\r\n\r\npage"}}}};
  HTTPSecureSocket socket(network);
  socket.HTTPProxyAddress = "proxy";
  socket.SetRequestHeader("Proxy-Authorization", "Basic x\r\nEvil: y");
  for (int i = 0; i < 2; ++i) {
    network.wire.clear();
    EXPECT_EQ(socket.Get(URL, 5), "page");
    ASSERT_EQ(network.wire.size(), 4U);
    EXPECT_EQ(network.wire[0], "proxy:443");
    EXPECT_EQ(network.wire[1],
              "CONNECT a.example:443 HTTP/1.0\r\nHost: a.example\r\n"
              "Proxy-Authorization: Basic xEvil: y\r\n\r\n");
    EXPECT_EQ(network.wire[2], "tls a.example");
    EXPECT_TRUE(network.wire[3].starts_with("GET /b?c=d HTTP/1.0\r\n"));
    EXPECT_TRUE(socket.Secure());
  }
}

TEST_F(HTTPSecureSocketTest, ATunnelThatFailsLeavesTheSocketSecure) {
  const struct {
    Peer peer;
    String page;
    int error;
  } cases[] = {
      {{.replies = {{"HTTP/1.0 403 No\r\nContent-length: 2\r\n\r\nno"}}}, "no", 0},
      {{.replies = {{"HTTP/1.0 403 No\r\n\r\nno"}}}, "no", 0},
      {{.replies = {{Established}}, .tls = SocketError::NotTrusted}, "", 110},
      {{.replies = {{}}}, "", 0},
      {{.ends = false}, "", -1},
      {{.refuses = SocketError::Refused}, "", 104},
  };
  for (const auto& [peer, page, error] : cases) {
    network.peers = {peer};
    HTTPSecureSocket socket(network);
    socket.HTTPProxyAddress = "proxy";
    EXPECT_EQ(socket.Get(URL, 5), page);
    EXPECT_EQ(socket.ErrorCode(), error);
    socket.HTTPProxyAddress = "";
    socket.Get(URL, 5);
    EXPECT_EQ(network.wire.back(), "a.example:443 tls a.example");
  }
}

Peer Challenging(int status, const String& challenge) {
  return Answering({"HTTP/1.0 " + Str(status) + " No\r\n" + (status == 401 ? "WWW" : "Proxy") +
                    "-Authenticate: " + challenge + "\r\n\r\nrefused"});
}

/// Answers every question, and notes it.
HTTPSecureSocket::Question Knows(Lines& story, bool answers = true) {
  return [&story, answers](const String& realm, const auto& headers, String& userName,
                           String& password) {
    story.push_back("asked for " + realm + ' ' + Str(headers->Count()));
    userName = "user";
    password = "secret";
    return answers;
  };
}

TEST_F(HTTPSecureSocketTest, AChallengeIsAnsweredOnceByARequestOnItsOwnConnection) {
  network.peers = {Challenging(401, "Basic realm=\"r\""),
                   Answering({"HTTP/1.0 200 OK\r\n\r\npage"}),
                   Answering({"HTTP/1.0 200 OK\r\n\r\nnext"})};
  HTTPSecureSocket socket(network);
  socket.AuthenticationRequired = Knows(story);
  EXPECT_EQ(socket.Get(URL, 5), "page");
  EXPECT_EQ(socket.Get(URL, 5), "next");
  const String plain = "GET /b?c=d HTTP/1.0\r\n" + Headers;
  const String to = "a.example:443 tls a.example";
  EXPECT_EQ(network.wire, (Lines{to, plain + "\r\n\r\n", to,
                                 plain + "\r\nAuthorization: Basic dXNlcjpzZWNyZXQ=\r\n\r\n", to,
                                 plain + "\r\n\r\n"}));
  EXPECT_EQ(story, Lines{"asked for r 1"});
}

TEST_F(HTTPSecureSocketTest, WhatIsNotAnsweredIsAPage) {
  const std::pair<Peer, HTTPSecureSocket::Question> cases[] = {
      {Challenging(401, "Basic realm=\"r\""), nullptr},
      {Challenging(407, "Basic realm=\"r\""), nullptr},
      {Challenging(401, "Basic realm=\"r\""), Knows(story, false)},
      {Challenging(401, "Negotiate"), Knows(story)},
      {Answering({"HTTP/1.0 401 No\r\n\r\nrefused"}), Knows(story)},
  };
  for (const auto& [peer, question] : cases) {
    network.peers = {peer};
    HTTPSecureSocket socket(network);
    socket.AuthenticationRequired = socket.ProxyAuthenticationRequired = question;
    EXPECT_EQ(socket.Get(URL, 5), "refused");
  }
  EXPECT_EQ(story, (Lines{"asked for r 1", "asked for  1", "asked for  0"}));
}

TEST_F(HTTPSecureSocketTest, ADigestHeaderIsTheseBytes) {
  network.md5 = [](std::string_view text) { return qt::QtNetwork().MD5(text); };
  network.random = 10;
  network.peers = {Challenging(401, "Digest realm=\"r\", nonce=\"n\", opaque=\"o\", qop=\"auth\""),
                   Challenging(401, "Digest realm=\"r\", nonce=\"n\""),
                   Challenging(401, "Digest realm=\"r\""),
                   Answering({"HTTP/1.0 200 OK\r\n\r\npage"})};
  HTTPSecureSocket socket(network);
  socket.AuthenticationRequired = Knows(story);
  EXPECT_EQ(socket.Post(URL, 5), "page");
  const auto answer = [&](std::size_t i) {
    const String& text = network.wire.at(2 * i + 1);
    const auto at = text.find("Digest ");
    return text.substr(at, text.find("\r\n", at) - at);
  };
  EXPECT_EQ(answer(1),
            "Digest username=\"user\", realm=\"r\", nonce=\"n\", uri=\"https://a.example/b?c=d\", "
            "qop=auth, nc=00000001, cnonce=\"ABCDEFGHIJKLMNOPQRSTUVWXY\", "
            "response=\"8cd4fffdebcb3ee00ee5440f4332c96f\", opaque=\"o\"");
  EXPECT_EQ(answer(2),
            "Digest username=\"user\", realm=\"r\", nonce=\"n\", uri=\"https://a.example/b?c=d\", "
            "qop=auth, nc=00000002, cnonce=\"Zabcdefghijklmnopqrstuvwx\", "
            "response=\"0babd2611c8834c4e4c3c12ce35bff56\", ");
  EXPECT_NE(answer(3).find("nonce=\"n\""), String::npos) << "the last one that was seen";
  EXPECT_NE(answer(3).find("nc=00000003, "), String::npos);
}

TEST_F(HTTPSecureSocketTest, AProxysKeyGoesOutWithTheNextConnectAndNeverThroughTheTunnel) {
  network.peers = {
      Challenging(407, "Digest realm=\"p\", nonce=\"n\""),
      {.replies = {{Established},
                   {"HTTP/1.0 401 No\r\nWWW-Authenticate: Basic realm=\"s\"\r\n\r\n"}}},
      {.replies = {{"HTTP/1.0 407 No\r\nProxy-Authenticate: Basic realm=\"p\"\r\n\r\n"}}},
      {.replies = {{Established}, {"HTTP/1.0 200 OK\r\n\r\npage"}}}};
  HTTPSecureSocket socket(network);
  socket.HTTPProxyAddress = "proxy";
  socket.AuthenticationRequired = socket.ProxyAuthenticationRequired = Knows(story);
  EXPECT_EQ(socket.Get(URL, 5), "page");
  EXPECT_EQ(story, (Lines{"asked for p 1", "asked for s 1", "asked for p 1"}));
  const String connect = "CONNECT a.example:443 HTTP/1.0\r\nHost: a.example";
  ASSERT_EQ(network.wire.size(), 12U);
  EXPECT_EQ(network.wire[1], connect + "\r\n\r\n");
  EXPECT_NE(network.wire[3].find(connect + "\r\nProxy-Authorization: Digest "), String::npos);
  EXPECT_NE(network.wire[3].find("uri=\"a.example:443\""), String::npos);
  EXPECT_EQ(network.wire[5], "GET /b?c=d HTTP/1.0\r\n" + Headers + "\r\n\r\n");
  EXPECT_EQ(network.wire[9], connect + "\r\nProxy-Authorization: Basic dXNlcjpzZWNyZXQ=\r\n\r\n");
  EXPECT_EQ(network.wire[11], "GET /b?c=d HTTP/1.0\r\n" + Headers +
                                  "\r\nAuthorization: Basic dXNlcjpzZWNyZXQ=\r\n\r\n");
}

TEST_F(HTTPSecureSocketTest, AProxysKeyForAPlainRequestServesThatAlone) {
  network.peers = {Challenging(407, "Basic realm=\"p\""),
                   Answering({"HTTP/1.0 200 OK\r\n\r\npage"}),
                   Answering({"HTTP/1.0 200 OK\r\n\r\nnext"})};
  HTTPSecureSocket socket(network);
  socket.SetSecure(false);
  socket.HTTPProxyAddress = "proxy";
  socket.ProxyAuthenticationRequired = Knows(story);
  EXPECT_EQ(socket.Get("http://a.example/", 5), "page");
  EXPECT_EQ(socket.Get("http://a.example/", 5), "next");
  const String plain = "GET http://a.example/ HTTP/1.0\r\n" + Headers;
  EXPECT_EQ(network.wire[3], plain + "\r\nProxy-Authorization: Basic dXNlcjpzZWNyZXQ=\r\n\r\n");
  EXPECT_EQ(network.wire[5], plain + "\r\n\r\n");
}

TEST_F(HTTPSecureSocketTest, AKeyThatWasNotTakenIsForNoOtherRequest) {
  for (const bool proxy : {false, true}) {
    network.peers = {Challenging(proxy ? 407 : 401, "Basic realm=\"r\""),
                     {.refuses = SocketError::Refused},
                     Answering({"HTTP/1.0 200 OK\r\n\r\n"})};
    HTTPSecureSocket socket(network);
    socket.AuthenticationRequired = socket.ProxyAuthenticationRequired = Knows(story);
    socket.HTTPProxyAddress = proxy ? "proxy" : "";
    socket.Get(URL, 5);
    socket.HTTPProxyAddress = "";
    socket.Get("https://other.example/", 5);
    EXPECT_EQ(network.wire.back().find("uthorization"), String::npos);
  }
}

TEST_F(HTTPSecureSocketTest, AServersChallengeToATunnelIsNotAnswered) {
  network.peers = {Challenging(401, "Basic realm=\"s\"")};
  HTTPSecureSocket socket(network);
  socket.HTTPProxyAddress = "proxy";
  socket.AuthenticationRequired = Knows(story);
  EXPECT_EQ(socket.Get(URL, 5), "refused");
  EXPECT_EQ(story, Lines{});
}

TEST_F(HTTPSecureSocketTest, PortsAreTheURLsOrTheCallersOrTheDefault) {
  HTTPSecureSocket socket(network);
  socket.SetDefaultPort(444);
  const auto goesTo = [&](const String& url) {
    socket.Get(url, 5);
    return network.wire.back();
  };
  EXPECT_EQ(goesTo("a"), "a:444 tls a");
  EXPECT_EQ(goesTo("a:1"), "a:1 tls a");
  EXPECT_EQ(goesTo("a"), "a:1 tls a") << "a port that is set stays";
  socket.HTTPProxyAddress = "proxy";
  EXPECT_EQ(goesTo("a"), "proxy:444");
  socket.HTTPProxyAddress = "";
  EXPECT_EQ(goesTo("a"), "a:1 tls a");
  socket.HTTPProxyAddress = "proxy";
  socket.HTTPProxyPort = 3128;
  EXPECT_EQ(goesTo("a"), "proxy:3128");
  socket.HTTPProxyAddress = "";
  socket.Port = 2;
  EXPECT_EQ(goesTo("a"), "a:2 tls a");
}

TEST_F(HTTPSecureSocketTest, WhatHappensWhileAnEventRunsIsRaisedBehindIt) {
  const test::TemporaryFolder folder;
  network.peers = {Challenging(401, "Basic realm=\"r\""),
                   Answering({"HTTP/1.0 200 OK\r\n\r\npa", "ge"})};
  HTTPSecureSocket socket(network);
  socket.AuthenticationRequired = [&](auto&&...) {
    socket.Poll();
    return true;
  };
  EXPECT_TRUE(socket.Get(URL, folder.Item("file"), 5));
  EXPECT_EQ(BinaryStream::Open(folder.Item("file")).Read(100), "page");

  network.peers = {
      {.replies = {{"HTTP/1.0 200 OK\r\nContent-length: 4\r\n\r\n", "ab", "cd"}}, .ends = false}};
  Listen(socket);
  socket.ReceiveProgress = [&](auto&&...) { socket.Poll(); };
  socket.Get(URL);
  network.RunEvents();
  EXPECT_EQ(story.back(), "page " + URL + " 200 abcd");
}

TEST_F(HTTPSecureSocketTest, AnEventMayMakeABlockingRequestOfItsOwn) {
  network.peers = {Answering({"HTTP/1.0 200 OK\r\n\r\nouter"}),
                   Answering({"HTTP/1.0 200 OK\r\n\r\ninner"})};
  HTTPSecureSocket socket(network);
  String page;
  socket.HeadersReceived = [&](auto&&...) { page = socket.Get("other.example", 5); };
  socket.Get(URL);
  network.RunEvents();
  EXPECT_EQ(page, "inner");
  EXPECT_FALSE(socket.threadProtection);

  network.peers = {Challenging(401, "Basic realm=\"r\""),
                   Answering({"HTTP/1.0 200 OK\r\n\r\ninner"})};
  socket.AuthenticationRequired = [&](auto&&...) {
    page = socket.Get("other.example", 5);
    return true;
  };
  EXPECT_EQ(socket.Get(URL, 5), "") << "the page of another request is not this one's";
  EXPECT_EQ(page, "inner");
}

TEST_F(HTTPSecureSocketTest, AQuestionThatThrowsEndsTheRequest) {
  network.peers = {Challenging(401, "Basic realm=\"r\""),
                   Answering({"HTTP/1.0 200 OK\r\n\r\npage"})};
  HTTPSecureSocket socket(network);
  socket.AuthenticationRequired = [](auto&&...) -> bool { throw std::runtime_error("broken"); };
  EXPECT_THROW(socket.Get(URL, 5), std::runtime_error);
  EXPECT_FALSE(socket.synchronous || socket.IsConnected() || socket.threadProtection);
  EXPECT_EQ(socket.Get(URL, 5), "page");
}

TEST_F(HTTPSecureSocketTest, ASocketMayBeDestroyedWhileItBlocks) {
  network.peers = {Challenging(401, "Basic realm=\"r\"")};
  auto socket = std::make_unique<HTTPSecureSocket>(network);
  socket->AuthenticationRequired = [&](auto&&...) {
    socket.reset();
    return true;
  };
  EXPECT_EQ(socket->Get(URL, 5), "");
  socket = std::make_unique<HTTPSecureSocket>(network);
  network.peers = {{.ends = false}};
  network.whileWaiting = [&] { socket.reset(); };
  EXPECT_EQ(socket->Get(URL, 5), "");
}

TEST_F(HTTPSecureSocketTest, ASocketMayBeDestroyedOrUsedAgainInEachOfItsEvents) {
  for (const bool again : {false, true}) {
    for (int event = 0; event < 7; ++event) {
      network.peers = {Answering({"HTTP/1.0 200 OK\r\nContent-length: 2\r\n\r\na", "b"}),
                       Answering({"HTTP/1.0 200 OK\r\n\r\nagain"})};
      if (event == 5) network.peers.front().refuses = SocketError::Refused;
      if (event == 6) network.peers.front() = Challenging(401, "Basic realm=\"r\"");
      auto socket = std::make_unique<HTTPSecureSocket>(network);
      String page;
      bool done = false;
      const auto act = [&] {
        if (std::exchange(done, true)) return;
        if (!again) {
          socket.reset();
          return;
        }
        socket->PageReceived = [&](const auto&, auto, const auto&, const String& content) {
          page = content;
        };
        socket->Get("again.example");
      };
      const test::TemporaryFolder folder;
      if (event == 0) socket->Connected = act;
      if (event == 1) socket->HeadersReceived = [&](auto&&...) { act(); };
      if (event == 2) socket->ReceiveProgress = [&](auto&&...) { act(); };
      if (event == 3) socket->PageReceived = [&](auto&&...) { act(); };
      if (event == 4) socket->DownloadComplete = [&](auto&&...) { act(); };
      if (event == 5) socket->Error = [&](auto&&...) { act(); };
      if (event == 6) {
        socket->AuthenticationRequired = [&](auto&&...) {
          act();
          return true;
        };
      }
      if (event == 4) {
        socket->Get(URL, folder.Item("file"));
      } else {
        socket->Get(URL);
      }
      network.RunEvents();
      EXPECT_TRUE(done) << event;
      EXPECT_EQ(page, again ? "again" : "") << event;
    }
  }
}

}  // namespace
}  // namespace vintrace::online
