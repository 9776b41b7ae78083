// The HTTP client, byte for byte, on a scripted network.

#include "online/http/HTTPSecureSocket.h"

#include <gtest/gtest.h>

#include "platform/net/qt/QtNetwork.h"
#include "support/ScriptedNetwork.h"
#include "support/TemporaryFolder.h"

namespace vintrace::http {
namespace {

using Lines = std::vector<String>;
using Peer = test::ScriptedNetwork::Peer;

const String URL = "https://a/b?c=d";
const String Headers = " HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: a\r\n";
const String Plain = "GET /b?c=d" + Headers;
const String OK = "HTTP/1.0 200 OK\r\n";
const String Established = "HTTP/1.1 200 Connection established\r\n\r\n";

/// A peer that answers one request, in these pieces, and ends the connection.
Peer Answering(Lines pieces) { return {.replies = {std::move(pieces)}}; }
/// A peer that answers one request and keeps the connection open.
Peer Staying(Lines pieces) { return {.replies = {std::move(pieces)}, .ends = false}; }

Peer Challenging(int status, const String& challenge) {
  return Answering({"HTTP/1.0 " + Str(status) + " No\r\n" + (status == 401 ? "WWW" : "Proxy") +
                    "-Authenticate: " + challenge + "\r\n\r\nrefused"});
}

const Peer Page = Answering({OK + "\r\npage"});

class HTTPSecureSocketTest : public testing::Test {
 protected:
  HTTPSecureSocketTest() { Renew(); }

  /// Makes a new socket, with handlers that record requests for a password and answer them.
  void Renew() {
    socket = std::make_unique<HTTPSecureSocket>(network);
    socket->LongestPage = 70'000;
    socket->AuthenticationRequired = socket->ProxyAuthenticationRequired =
        [this](const auto& realm, const auto& headers, auto& userName, auto& password) {
          story.push_back("asked for " + realm + ' ' + Str(headers->Count()));
          userName = "user";
          password = "secret";
          return true;
        };
  }

  test::ScriptedNetwork network;
  Lines story;
  std::unique_ptr<HTTPSecureSocket> socket;
};

TEST_F(HTTPSecureSocketTest, EachRequestSendsTheExpectedBytesToTheExpectedPort) {
  const auto sends = [&](const String& method, const String& url, const String& bytes) {
    network.wire.clear();
    network.peers = {Page};
    socket->SendRequest(method, url, 5);
    EXPECT_EQ(network.wire.front() + '|' + network.wire.back(), bytes);
  };
  socket->SetDefaultPort(444);
  sends("GET", URL, "a:444 tls a|" + Plain + "\r\n");
  socket->SetRequestContent("xyz", "a/b ");
  sends("POST", URL,
        "a:444 tls a|POST /b?c=d" + Headers + "Content-type: a/b \r\nContent-length: 3\r\n\r\nxyz");
  socket->SetRequestHeader("accept", "");
  sends("HEAD", "b:1",
        "b:1 tls b|HEAD / HTTP/1.0\r\nAccept-Language: en\r\nHost: b:1\r\nContent-type: a/b "
        "\r\n\r\n");
  socket->ClearRequestHeaders();
  socket->SetRequestHeader("X\n", "1\r\nY: 2");
  sends("P\r\nX", "x://b/\rZ?y://z",
        "b:1 tls b|PX /Z?y://z HTTP/1.0\r\nX: 1Y: 2\r\nHost: b\r\n\r\n");
  socket->requestHeaders.reset();
  socket->HTTPProxyAddress = "proxy";
  socket->SetSecure(false);
  sends("GET", URL, "proxy:444|GET " + URL + Headers + "\r\n");
  socket->HTTPProxyAddress = "";
  sends("GET", URL, "a:1|" + Plain + "\r\n");
}

TEST_F(HTTPSecureSocketTest, SplittingAReplyDoesNotChangeThePage) {
  const struct {
    String bytes, page;
    std::int64_t status;
  } replies[] = {
      {"HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\nhello", "hello", 200},
      {"HTTP/1.0 200 OK\r\nA: 1\r\n\r\nuntil the end", "until the end", 200},
      {"HTTP/1.0 200 OK\nA: 1\nA: 2\n\nbare LF", "bare LF", 200},
      {"HTTP/1.0 200 OK\rA: 1\r\rbare CR", "bare CR", 200},
      {"HTTP/1.0 200 OK\r\nA: 1\r\n  2\r\n\r\n", "", 200},
      {"HTTP/1.1 404 Not Found\r\ncontent-LENGTH: 2\r\n\r\nno", "no", 404},
      {"HTTP/1.0 200 OK\r\nContent-Length: -1\r\n\r\nx", "x", 200},
      {"HTTP/1.0 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nx", "x", 200},
      {"HTTP/1.0 401 No\r\nContent-Length: 1\r\n\r\nx", "x", 401},
      {"\r\n\r\nx", "x", 0},
      {"no headers at all", "no headers at all", 0},
      {"", "", 0},
      {"x 200.7\n\nb\r\nc", "b\r\nc", 200},
      {"HTTP/1.0\r\nA: 7\r\n\r\nb", "b", 0},
  };
  for (const auto& [bytes, page, status] : replies) {
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
      SCOPED_TRACE(bytes + Str(static_cast<std::int64_t>(cut)));
      const Peer peer = Answering({bytes.substr(0, cut), bytes.substr(cut)});
      network.peers = {peer, peer};
      HTTPSecureSocket client(network);
      EXPECT_EQ(client.Get(URL, 5), page);
      EXPECT_EQ(client.HTTPStatusCode(), status);
      EXPECT_EQ(client.ErrorCode(), 0);
      String seen;
      client.Connected = [&] { seen += "connected "; };
      client.HeadersReceived = [&](auto&&, auto code) { seen += Str(code) + ' '; };
      client.PageReceived = [&](auto&& url, auto code, auto&&, auto&& content) {
        seen.append(url).append(" ").append(Str(code)).append(" ").append(content);
      };
      client.Get(URL);
      EXPECT_EQ(seen, "") << "events are raised by the event loop only";
      network.RunEvents();
      const String number = Str(status) + ' ';
      String expected = page == bytes ? "connected " : "connected " + number;
      EXPECT_EQ(seen, expected.append(URL).append(" ").append(number).append(page));
    }
  }
}

TEST_F(HTTPSecureSocketTest, NoOutcomeOfARequestAffectsTheNextOne) {
  const String basic = "Basic realm=\"r\"";
  const struct {
    Peer peer;
    String page;
    int error = 0;
    String proxy = {};
    String method = "GET";
  } rows[] = {
      {Answering({OK + "Content-Length: 2\r\n\r\nabc"}), "abc"},
      {Answering({OK + "Content-Length: 2\r\n\r\n", "ab", "c"}), "ab"},
      {Answering({OK + "Content-Length: 9\r\n\r\n", "ab"}), "ab"},
      {Answering({OK + "Content-Length: 5\r\n\r\nthere"}), "", 0, "", "HEAD"},
      {Staying({OK + "Content-Length: 5\r\n\r\n"}), "", -1, "", "HEAD"},
      {Staying({OK + "\r\npage"}), "page", -1},
      {Staying({}), "", -1},
      {Staying({String(70'000, 'x')}), "", HTTPSecureSocket::HeadersTooLong},
      {Answering({OK + "\r\n" + String(70'001, 'x')}), "", HTTPSecureSocket::PageTooLong},
      {Challenging(401, "Negotiate"), "refused"},
      {Challenging(401, basic), "", 104},
      {Challenging(407, basic), "", 104, "proxy"},
      {Challenging(401, basic), "refused", 0, "proxy"},
      {Answering({"HTTP/1.0 403 No\r\nContent-length: 2\r\n\r\nno"}), "no", 0, "proxy"},
      {Answering({}), "", 0, "proxy"},
      {Staying({}), "", -1, "proxy"},
      {{.refuses = SocketError::Refused}, "", 104, "proxy"},
  };
  for (const auto& [peer, page, error, proxy, method] : rows) {
    Renew();
    network.peers = {peer};
    socket->HTTPProxyAddress = proxy;
    socket->HTTPProxyPort = 3128;
    EXPECT_EQ(socket->SendRequest(method, URL, 5), page);
    EXPECT_EQ(socket->ErrorCode(), error);
    EXPECT_FALSE(socket->IsConnected());
    EXPECT_EQ(socket->Port, 443) << "the proxy's port must not stay";
    network.peers = {Page};
    network.wire.clear();
    socket->HTTPProxyAddress = "";
    EXPECT_EQ(socket->Get(URL, 5), "page");
    EXPECT_EQ(socket->PageHeaders(), nullptr);
    EXPECT_EQ(network.wire, (Lines{"a:443 tls a", Plain + "\r\n"}));
  }
  EXPECT_EQ(network.ticks, 1205) << "each timeout is five seconds, restarted when data arrives";
  EXPECT_EQ(story, (Lines{"asked for  1", "asked for r 1", "asked for r 1"}));
}

TEST_F(HTTPSecureSocketTest, ADownloadGoesIntoItsFile) {
  const test::TemporaryFolder folder;
  const FolderItem file = folder.File("page", "something longer before");
  const auto bytes = [&] { return BinaryStream::Open(file, false).Read(100, nullptr); };
  network.peers = {Challenging(401, "Basic"),
                   Answering({OK + "\r\npa", "ge"}),
                   Answering({"HTTP/1.0 404 No\r\nContent-length: 2\r\n\r\nn", "o"}),
                   {.refuses = SocketError::Refused},
                   Page};
  socket->Error = [&](int code) { story.push_back("error " + Str(code)); };
  socket->ReceiveProgress = [&](auto now, auto total, const auto& data) {
    story.push_back(Str(now) + '/' + Str(total) + ' ' + data);
  };
  socket->DownloadComplete = [&](auto&& url, auto status, auto&&, const FolderItem& item) {
    story.push_back(url + ' ' + Str(status) + ' ' + item.Name());
  };
  EXPECT_TRUE(socket->Get(URL, file, 5));
  EXPECT_EQ(bytes(), "page");
  socket->Post(URL, file);
  network.RunEvents();
  EXPECT_EQ(bytes(), "no");
  EXPECT_EQ(socket->PageHeaders()->Value("Content-Length"), "2");
  EXPECT_FALSE(socket->Get(URL, file, 5));
  EXPECT_EQ(bytes(), "");
  network.wire.clear();
  EXPECT_FALSE(socket->Get(URL, FolderItem("/missing/x"), 0));
  socket->Get(URL, FolderItem(folder.Path().native()));
  EXPECT_EQ(story, (Lines{"asked for  1", "1/2 n", "2/2 o", URL + " 404 page", "error 1"}));
  EXPECT_EQ(network.wire, Lines{});
}

TEST_F(HTTPSecureSocketTest, OnlyTheRequestForATunnelIsSentInTheClear) {
  network.md5 = [](std::string_view text) { return qt::QtNetwork().MD5(text); };
  const Peer tunnel{.replies = {{Established + "injected"}, {OK + "\r\npage"}}};
  Peer asking = tunnel;
  asking.replies[1] = Challenging(401, R"(Digest realm="s", nonce="n")").replies.front();
  network.peers = {Challenging(407, R"(Digest realm="p", nonce="n", opaque="o", qop="auth")"),
                   asking, Challenging(407, R"(Digest realm="p")"), tunnel, tunnel};
  socket->HTTPProxyAddress = "proxy";
  socket->HTTPProxyPort = 3128;
  EXPECT_EQ(socket->Get(URL, 5), "page");
  socket->SetRequestHeader("Proxy-Authorization", "Basic x\r\nEvil: y");
  EXPECT_EQ(socket->Get(URL, 5), "page");
  EXPECT_EQ(story, (Lines{"asked for p 1", "asked for s 1", "asked for p 1"}));
  const String connect = "CONNECT a:443 HTTP/1.0\r\nHost: a\r\n";
  const String toProxy = connect + "Proxy-Authorization: ";
  const String ofProxy = R"(Digest username="user", realm="p", nonce="n", uri="a:443", qop=auth, )";
  const String ofServer =
      R"(Digest username="user", realm="s", nonce="n", uri="https://a/b?c=d", qop=auth, )";
  EXPECT_EQ(std::erase(network.wire, "proxy:3128"), 5U);
  const Lines expected = {
      connect + "\r\n",
      toProxy + ofProxy +
          R"(nc=00000001, cnonce="0123456789ABCDEFGHIJKLMNO", response="7be6f3693fa8aafd3c45986ca0101ba4", opaque="o")" +
          "\r\n\r\n",
      "tls a",
      Plain + "\r\n",
      connect + "\r\n",
      toProxy + ofProxy +
          R"(nc=00000003, cnonce="opqrstuvwxyz0123456789ABC", response="d15ef2fcd2bcddb5a6d107d75ceceb82", )" +
          "\r\n\r\n",
      "tls a",
      Plain + "Authorization: " + ofServer +
          R"(nc=00000002, cnonce="PQRSTUVWXYZabcdefghijklmn", response="d5a7de971ed7d0f0f1c6eb9f2fb51065", )" +
          "\r\n\r\n",
      toProxy + "Basic xEvil: y\r\n\r\n",
      "tls a",
      Plain + "Proxy-Authorization: Basic xEvil: y\r\n\r\n"};
  EXPECT_EQ(network.wire, expected);
}

TEST_F(HTTPSecureSocketTest, AThrowingPasswordHandlerEndsTheRequest) {
  network.peers = {Challenging(401, "Basic"), Page};
  socket->AuthenticationRequired = [](auto&&...) -> bool { throw std::runtime_error("broken"); };
  EXPECT_THROW(socket->Get(URL, 5), std::runtime_error);
  EXPECT_FALSE(socket->synchronous || socket->IsConnected());
  EXPECT_EQ(socket->Get(URL, 5), "page");
}

TEST_F(HTTPSecureSocketTest, AWaitInAnEventEndsAndNothingFollowsAnError) {
  const std::tuple<Peer, std::int64_t, Lines> rows[] = {
      {Answering({OK + "\r\npa", "ge"}), 0, {"headers", "progress page", "page"}},
      {Answering({OK + "Content-length: 4\r\n\r\npa", "ge"}),
       0,
       {"headers", "progress page", "page"}},
      {Staying({OK + "\r\npa", "ge"}), 1, {"headers", "error -1"}},
  };
  for (const auto& [peer, timeout, expected] : rows) {
    Renew();
    story.clear();
    network.peers = {peer};
    socket->timeoutSeconds = timeout;
    socket->HeadersReceived = [&](auto&&...) {
      story.emplace_back("headers");
      socket->WaitForPage();
    };
    socket->ReceiveProgress = [&](auto, auto, auto&& data) { story.push_back("progress " + data); };
    socket->PageReceived = [&](auto&&, auto, auto&&, auto&& page) { story.push_back(page); };
    socket->Error = [&](int code) { story.push_back("error " + Str(code)); };
    socket->Get(URL);
    network.RunEvents();
    EXPECT_EQ(story, expected);
  }
}

TEST_F(HTTPSecureSocketTest, ASocketMayBePolledReusedOrDestroyedInAnyEvent) {
  enum { Poll, GetAgain, WaitForAnother, Destroy };
  const Peer whole = Staying({OK + "Content-length: 5\r\n\r\nfi", "rst"});
  const Peer refusing{.refuses = SocketError::Refused};
  int acts = 0;
  for (const int action : {Poll, GetAgain, WaitForAnother, Destroy}) {
    for (const bool blocks : {false, true}) {
      for (const auto& peer : {whole, Staying({}), refusing, Challenging(401, "Basic")}) {
        for (int at = 0, events = 0; events >= at; ++at) {
          Renew();
          events = 0;
          String page;
          const auto act = [&](auto&&...) {
            if (events++ != at) return true;
            ++acts;
            if (action == Poll) socket->Poll();
            if (action == GetAgain) socket->Get("again");
            if (action == WaitForAnother) page = socket->Get("again", 1);
            if (action == Destroy) socket.reset();
            return true;
          };
          const auto listen = [&](auto&... raised) { ((raised = act), ...); };
          listen(socket->Connected, socket->HeadersReceived, socket->ReceiveProgress, socket->Error,
                 socket->AuthenticationRequired, network.whileWaiting);
          socket->PageReceived = [&](auto&&, auto, auto&&, const String& content) {
            page = content;
            act();
          };
          network.peers = {peer, Page, Page};
          if (!blocks) socket->Get(URL);
          const String waited = blocks ? socket->Get(URL, 1) : "";
          network.RunEvents();
          const bool acted = events > at;
          const bool again = action == GetAgain || action == WaitForAnother;
          EXPECT_TRUE(!acted || !again || page + waited == "page") << action << blocks << at;
          EXPECT_TRUE(!acted || action != Destroy || waited.empty()) << action << blocks << at;
          EXPECT_TRUE(action != Poll || peer.replies != whole.replies || page + waited == "first");
        }
      }
    }
  }
  EXPECT_GT(acts, 100);
}

}  // namespace
}  // namespace vintrace::http
