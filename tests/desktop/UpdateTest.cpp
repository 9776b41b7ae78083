// The online services on a desktop: their windows, and the user's input while they are awaited.

#include <QTcpServer>
#include <QTcpSocket>

#include "desktop/DesktopFixture.h"
#include "peers/TlsServer.h"
#include "resources/Endpoints.h"
#include "support/Environment.h"

namespace vintrace::test {
namespace {

/// A service that accepts connections and never sends anything.
class SilentService {
 public:
  SilentService() { server_.listen(QHostAddress::LocalHost); }

  std::string Host() const { return "127.0.0.1:" + std::to_string(server_.serverPort()); }
  bool IsAsked() {
    return Comes([&] { return server_.hasPendingConnections(); });
  }
  /// Waits for a connection and aborts it.
  void Refuse() {
    EXPECT_TRUE(IsAsked());
    End();
  }
  void Go() {
    End();
    server_.close();
  }

 private:
  void End() {
    while (auto* client = server_.nextPendingConnection()) client->abort();
  }

  QTcpServer server_;
};

class UpdateOnDesktop : public ProgramOnDesktop {
 protected:
  void StartWithService(const std::string& host, const QStringList& documents) {
    const Environment service("VINTRACE_TEST_SERVICE", host.c_str());
    StartWith(documents);
  }

  /// True if another start hands over to the program and ends.
  static bool Hears(const QStringList& documents) { return IsTaken(*StartAgain(documents)); }
};

TEST_F(UpdateOnDesktop, WindowsRepaintAndInputIsDeferredWhileAServiceIsSilent) {
  const struct {
    bool byMenu;
    const char* plainLoop;  ///< Non-null: Qt's own event loop runs, not GLib's.
  } rows[] = {{false, nullptr}, {false, "1"}, {true, nullptr}};
  for (const auto& [byMenu, plainLoop] : rows) {
    const Environment loop("QT_NO_GLIB", plainLoop);
    SilentService service;
    StartWithService(service.Host(), {PathOfDocument("a.indd"), PathOfDocument("b.indd"),
                                      PathOfDocument("c.indd"), PathOfDocument("d.indd")});
    ASSERT_TRUE(HasWindows({"a.indd", "b.indd", "c.indd", "d.indd"}));
    const WId a = WindowNamed("a.indd");
    const WId b = WindowNamed("b.indd");
    const WId c = WindowNamed("c.indd");
    if (byMenu) {
      service.Refuse();
      service.Refuse();
      Press(c, {"ctrl+r"});
    }
    ASSERT_TRUE(service.IsAsked());
    const QImage product = Drawn("Adobe InDesign CS6", {161, 20}, 12, Qt::black);
    QWidget cover;
    cover.showFullScreen();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&cover));
    cover.hide();
    for (const WId window : {a, b, c}) EXPECT_TRUE(Shows(window, {104, 38}, product));

    Press(b, {"alt+F4"});
    OutputOf("xdotool", {"windowactivate", "--sync", QString::number(a)});
    Click(a, Place(a, {200, 120}));
    Press(c, {"ctrl+w"});
    EXPECT_TRUE(Hears({PathOfDocument("later.indd")}));
    EXPECT_TRUE(HasWindows({"a.indd", "b.indd", "c.indd", "d.indd"}));
    service.Go();
    if (byMenu) DismissMessage();
    EXPECT_TRUE(HasWindows({"d.indd", "later.indd"}));
    program.terminate();
    AwaitEnd();
  }
}

TEST_F(UpdateOnDesktop, AQuitWhileAServiceIsSilentEndsTheProgram) {
  enum { Signal, Key, KeyBeforeAMessage };
  for (const auto kind : {Signal, Key, KeyBeforeAMessage}) {
    SilentService service;
    StartWithService(service.Host(), {PathOfDocument("a.indd")});
    const WId window = WindowNamed("a.indd");
    if (kind == KeyBeforeAMessage) {
      service.Refuse();
      service.Refuse();
      Press(window, {"ctrl+r"});
    }
    ASSERT_TRUE(service.IsAsked());
    if (kind == Signal) {
      program.terminate();
    } else {
      Press(window, {"ctrl+q"});
      EXPECT_TRUE(Hears({}));
      service.Go();
    }
    AwaitEnd();
  }
}

TEST_F(UpdateOnDesktop, TheNoticeStaysAboveDocumentsAndReturnOpensTheDownload) {
  const Authority authority(folder.Path(), "Root");
  const Environment root("VINTRACE_TEST_ROOT", authority.Root().c_str());
  TlsServer service(authority.Sign("service"));
  for (const char* reply : {"true", "", "true", "false", "else"}) {
    service.Expect({.pieces = {std::string("HTTP/1.0 200 OK\r\n\r\n") + reply},
                    .pause = std::chrono::milliseconds(500)});
  }
  const QString title = "Vintrace CS Ver.1.20";
  StartWithService("localhost:" + std::to_string(service.Port()), {PathOfDocument("a.indd")});
  const WId document = WindowNamed("a.indd");
  ASSERT_NE(document, 0U);
  Press(document, {"Return"});  // Not for the notice, which is not open yet.
  const WId notice = WindowNamed(title);
  ASSERT_NE(notice, 0U);
  EXPECT_EQ(Screenshot(notice).size(), QSize(337, 115));
  const auto isAbove = [&] {
    return OutputOf("xprop", {"-id", QString::number(notice), "_NET_WM_STATE"}).contains("ABOVE");
  };
  EXPECT_TRUE(Comes(isAbove));
  Press(document, {"ctrl+c"});
  ASSERT_NE(WindowNamed("Vintrace"), 0U);
  EXPECT_TRUE(Comes([&] { return !isAbove(); })) << "the notice would hide a message box";
  DismissMessage();
  EXPECT_TRUE(Comes(isAbove));
  Press(notice, {"ctrl+r"});  // Shows the same notice again.
  Press(notice, {"Return"});
  EXPECT_TRUE(HasWindows({"a.indd"}));
  EXPECT_TRUE(Comes([&] { return Opened() == endpoints::DownloadPage; })) << Opened();
  for (int answer = 0; answer < 2; ++answer) {
    Press(document, {"ctrl+r"});
    DismissMessage();
  }
  EXPECT_EQ(service.Requests().size(), 5U);
}

}  // namespace
}  // namespace vintrace::test
