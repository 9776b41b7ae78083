// The update check, from startup and the menu item to the bytes on the wire.

#include "peers/PeerFixture.h"
#include "shell/Startup.h"
#include "support/ScriptedHost.h"

namespace vintrace::test {
namespace {

using UpdateCheckTest = PeerTest;

const String Notice = "Vintrace CS Ver.1.20";
const String Latest = "最新版を使用しています。";
const String Failed = "通信に障害があり、確認できませんでした。";

const String UpdateRequest =
    "POST /www/ssl/vcheck.php HTTP/1.0\r\nAccept: */*\r\nAccept-Language: en\r\nHost: HOST\r\n"
    "Content-type: application/x-www-form-urlencoded\r\nContent-length: 32\r\n\r\n"
    "app%5Fid=3&ver=120&regi=Vintrace";

/// A scripted desktop with a real network.
class OnlineHost : public ScriptedHost {
 public:
  vintrace::Network& Network() override { return real_; }

 private:
  qt::QtNetwork real_;
};

/// Starts the program and chooses the menu item. `answer`: the expected message, or `Notice` for
/// the notice, which must open at startup too.
void ExpectAnswer(const String& service, const String& answer) {
  const Environment host("VINTRACE_TEST_SERVICE", service.c_str());
  OnlineHost desktop;
  _Main();
  const Lines notices = answer == Notice ? Lines{answer} : Lines{};
  EXPECT_EQ(desktop.Titles(), notices);
  EXPECT_EQ(desktop.story.size(), 2 * notices.size()) << "shown on creation and by Show";
  desktop.story.clear();
  EXPECT_TRUE(desktop.Choose("upchk"));
  EXPECT_EQ(desktop.Titles(), notices) << "there is only one notice";
  EXPECT_EQ(desktop.story, Lines{answer == Notice ? "window" : "message: " + answer});
}

TEST_F(UpdateCheckTest, SendsTheExpectedBytesAndInterpretsTheReply) {
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

TEST_F(UpdateCheckTest, AnUnreachableOrMissingServiceIsReportedAsAFailure) {
  ExpectAnswer("localhost:1", Failed);
  ExpectAnswer("no-such-host.invalid", Failed);
  ScriptedHost desktop;
  _Main();
  desktop.Choose("upchk");
  EXPECT_EQ(desktop.story, Lines{"message: " + Failed});
  EXPECT_EQ(desktop.network.wire, Lines{}) << "without a service host, nothing is sent";
}

}  // namespace
}  // namespace vintrace::test
