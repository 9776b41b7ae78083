// The exchanges with the online services, from the start and from the menu item to the bytes on the
// wire.

#include <QTest>

#include "peers/PeerFixture.h"
#include "peers/TlsServer.h"
#include "shell/Startup.h"
#include "support/Environment.h"
#include "support/ScriptedHost.h"

namespace vintrace::test {
namespace {

using End = TlsServer::End;
using Moment = TlsServer::Moment;
using Lines = std::vector<std::string>;

const String Notice = "Vintrace CS Ver.1.20";
const String Latest = "最新版を使用しています。";
const String Failed = "通信に障害があり、確認できませんでした。";

/// The toolkit's network, on which time may run faster.
class HastyNetwork : public qt::QtNetwork {
 public:
  std::int64_t haste = 1;
  int connections = 0;
  std::int64_t Ticks() override { return haste * QtNetwork::Ticks(); }
  std::unique_ptr<Connection> NewConnection(std::function<void()> changed) override {
    ++connections;
    return QtNetwork::NewConnection(std::move(changed));
  }
};

/// A scripted desktop with a real network.
class OnlineHost : public ScriptedHost {
 public:
  explicit OnlineHost(vintrace::Network& real) : network_(real) {}
  vintrace::Network& Network() override { return network_; }

 private:
  vintrace::Network& network_;
};

class UpdateCheckTest : public PeerTest {
 protected:
  /// Starts the program and chooses the menu item. `answer`: what the user is to be told there;
  /// the notice, which comes at the start too, or a message.
  void ExpectAnswer(const String& service, const String& answer) {
    const Environment host("VINTRACE_TEST_SERVICE", service.c_str());
    OnlineHost desktop(hasty);
    _Main();
    const Lines notices = answer == Notice ? Lines{answer} : Lines{};
    EXPECT_EQ(desktop.Titles(), notices);
    EXPECT_EQ(desktop.story.size(), 2 * notices.size()) << "the window, and that it is shown";
    desktop.story.clear();
    EXPECT_TRUE(desktop.Choose("upchk"));
    EXPECT_EQ(desktop.Titles(), notices) << "one notice, however often it is shown";
    EXPECT_EQ(desktop.story.back(), answer == Notice ? "window" : "message: " + answer);
    EXPECT_EQ(desktop.story.size(), 1U);
  }

  const Environment dataHome{"XDG_DATA_HOME", folder.Path().c_str()};
  HastyNetwork hasty;
};

String ServiceAt(const TlsServer& server) { return "localhost:" + Str(server.Port()); }

TEST_F(UpdateCheckTest, EachReplyHasItsAnswerOnBothPaths) {
  const String page = "HTTP/1.0 200 OK\r\n\r\n";
  const struct {
    String name;
    TlsServer::Script script;
    String answer;
    std::int64_t haste = 1;
  } rows[] = {
      {"newer", {.pieces = {page + "true"}}, Notice},
      {"none", {.pieces = {page + "false"}}, Latest},
      {"with a line end", {.pieces = {page + "true\n"}}, Failed},
      {"with a blank", {.pieces = {page + "false "}}, Failed},
      {"empty", {.pieces = {page}}, Failed},
      {"not found", {.pieces = {"HTTP/1.0 404 Not Found\r\n\r\nnot here"}}, Failed},
      {"not found, and true", {.pieces = {"HTTP/1.0 404 Not Found\r\n\r\ntrue"}}, Notice},
      {"elsewhere", {.pieces = {"HTTP/1.0 302 Found\r\nLocation: /path\r\n\r\nmoved"}}, Failed},
      {"a password is wanted",
       {.pieces = {"HTTP/1.0 401 No\r\nWWW-Authenticate: Basic realm=\"a\"\r\n\r\nno"}},
       Failed},
      {"slow, but never silent for the limit",
       {.pieces = {"HTTP/1.0 200 OK\r\n\r\nf", "a", "l", "se"}, .pause = std::chrono::seconds(1)},
       Latest,
       2},
      {"silent behind a whole word", {.pieces = {page + "true"}, .end = End::Never}, Notice, 4},
      {"silent behind a half", {.pieces = {page + "tr"}, .end = End::Never}, Failed, 10},
      {"silent", {.end = End::Never, .moment = Moment::BeforeHandshake}, Failed, 50},
      {"gone", {.moment = Moment::InHandshake}, Failed},
  };
  for (const auto& [name, script, answer, haste] : rows) {
    SCOPED_TRACE(name);
    TlsServer server(valid);
    for (int exchange = 0; exchange < 3; ++exchange) server.Expect(script);
    hasty.haste = haste;
    ExpectAnswer(ServiceAt(server), answer);
    const bool asked = script.moment == Moment::AfterReply;
    EXPECT_EQ(server.Requests().size(), asked ? 3U : 0U) << "and nothing is asked again";
  }
}

TEST_F(UpdateCheckTest, WithoutAServiceTheCheckFailsAndTheProgramGoesOn) {
  ExpectAnswer("localhost:1", Failed);
  ExpectAnswer("no-such-host.invalid", Failed);
  TlsServer impostor(authority.SelfSigned("self"));
  for (int exchange = 0; exchange < 3; ++exchange) {
    impostor.Expect({.pieces = {"HTTP/1.0 200 OK\r\n\r\ntrue"}});
  }
  ExpectAnswer(ServiceAt(impostor), Failed);
  Lines seen;
  EXPECT_TRUE(QTest::qWaitFor([&] {
    for (const auto& request : impostor.Requests()) seen.push_back(request);
    return seen.size() == 3;
  }));
  EXPECT_EQ(seen, Lines(3)) << "not one byte";
  hasty.connections = 0;
  ExpectAnswer("", Failed);
  EXPECT_EQ(hasty.connections, 0) << "a build for a distributor calls nobody";
}

TEST_F(UpdateCheckTest, TheBytesOfTheExchangesComeInTheirOrder) {
  TlsServer server(valid);
  const Environment host("VINTRACE_TEST_SERVICE", ServiceAt(server).c_str());
  OnlineHost desktop(hasty);
  _Main();
  desktop.Choose("upchk");
  const auto request = [&](const String& page, const String& field) {
    return "POST /www/ssl/" + page +
           " HTTP/1.0\r\n"
           "Accept: */*\r\n"
           "Accept-Language: en\r\n"
           "Host: " +
           ServiceAt(server) +
           "\r\n"
           "Content-type: application/x-www-form-urlencoded\r\n"
           "Content-length: 32\r\n"
           "\r\n"
           "app%5Fid=3&ver=120&regi=" +
           field;
  };
  const String update = request("vcheck.php", "Vintrace");
  const String report = request("kcheck.php", "Vintrase");
  EXPECT_EQ(server.Requests(), (Lines{update, report, update}));
}

}  // namespace
}  // namespace vintrace::test
