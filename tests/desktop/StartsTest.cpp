// Several starts of the program, which give one running program.

#include <sys/types.h>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <csignal>
#include <memory>

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

class StartsOnDesktop : public ProgramOnDesktop {
 protected:
  static bool HasEnded(const std::unique_ptr<QProcess>& start) {
    return start->state() == QProcess::NotRunning;
  }

  static bool IsActive(WId window) {
    return OutputOf("xdotool", {"getactivewindow"}).toULongLong() == window;
  }

  void Send(int signal) const { kill(static_cast<pid_t>(program.processId()), signal); }
};

TEST_F(StartsOnDesktop, TheSecondHandsItsDocumentsToTheFirst) {
  StartWith({PathOfDocument("a.indd")});
  ASSERT_NE(WindowNamed("a.indd"), 0U);
  EXPECT_TRUE(IsTaken(*StartAgain({PathOfDocument("b.indd"), PathOfDocument("c.indd")})));
  EXPECT_TRUE(HasWindows({"a.indd", "b.indd", "c.indd"}));
  EXPECT_EQ(program.state(), QProcess::Running);
}

/// Hears what is told to those who follow the starts of programs.
class StartupMessages : public QAbstractNativeEventFilter {
 public:
  StartupMessages() { qApp->installNativeEventFilter(this); }
  StartupMessages(const StartupMessages&) = delete;
  StartupMessages& operator=(const StartupMessages&) = delete;
  ~StartupMessages() override { qApp->removeNativeEventFilter(this); }

  std::string text;

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto& event = *static_cast<xcb_generic_event_t*>(message);
    if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
    const auto& told = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (told.format == 8) text.append(std::begin(told.data.data8), std::end(told.data.data8));
    return false;
  }
};

TEST_F(StartsOnDesktop, TheSecondBringsTheFirstToTheFrontForTheDesktop) {
  StartWith({PathOfDocument("a.indd")});
  const WId a = WindowNamed("a.indd");
  QWidget other;
  other.setWindowTitle("other");
  other.show();
  for (const char* id : {"", "launcher \"of\" vintrace_TIME4294967295"}) {
    OutputOf("xdotool", {"windowactivate", "--sync", QString::number(other.winId())});
    ASSERT_TRUE(Comes([&] { return IsActive(other.winId()); }));
    StartupMessages messages;
    EXPECT_TRUE(IsTaken(*StartAgain({}, id)));
    EXPECT_TRUE(Comes([&] { return IsActive(a); })) << id;
    if (*id == '\0') continue;
    const std::string told =
        R"(remove: ID="launcher \"of\" vintrace_TIME4294967295")" + std::string(1, '\0');
    EXPECT_TRUE(Comes([&] { return messages.text.find(told) != std::string::npos; }))
        << messages.text;
  }
}

TEST_F(StartsOnDesktop, ABusyFirstTakesDocumentsAtOnceAndOpensThemLater) {
  StartWith({PathOfDocument("a.indd")});
  Press(WindowNamed("a.indd"), {"ctrl+c"});
  ASSERT_NE(WindowNamed("Vintrace"), 0U);
  EXPECT_TRUE(IsTaken(*StartAgain({PathOfDocument("b.indd")})));
  EXPECT_TRUE(HasWindows({"Vintrace", "a.indd"}));
  DismissMessage();
  EXPECT_TRUE(HasWindows({"a.indd", "b.indd"}));
}

TEST_F(StartsOnDesktop, AHangingFirstIsReplacedAndEachDocumentOpensOnce) {
  StartWith({PathOfDocument("a.indd")});
  ASSERT_NE(WindowNamed("a.indd"), 0U);
  Send(SIGSTOP);
  const auto second = StartAgain({PathOfDocument("b.indd")});
  EXPECT_NE(WindowNamed("b.indd"), 0U);
  Send(SIGCONT);
  EXPECT_TRUE(IsTaken(*StartAgain({PathOfDocument("c.indd")})));
  EXPECT_TRUE(HasWindows({"a.indd", "b.indd", "c.indd"}));
  program.terminate();
  AwaitEnd();
  EXPECT_TRUE(HasWindows({"b.indd", "c.indd"}));
  second->terminate();
  EXPECT_TRUE(IsTaken(*second));
}

TEST_F(StartsOnDesktop, TenAtOnceGiveOneProgramWithAllDocuments) {
  constexpr int Count = 10;
  constexpr int DocumentsEach = 20;
  constexpr std::size_t AllDocuments = 200;
  std::vector<std::unique_ptr<QProcess>> starts;
  for (int start = 0; start < Count; ++start) {
    QStringList documents;
    for (int i = 0; i < DocumentsEach; ++i) {
      documents.push_back(PathOfDocument(std::to_string(start * DocumentsEach + i) + ".indd"));
    }
    starts.push_back(StartAgain(documents));
  }
  EXPECT_TRUE(Comes([&] { return std::ranges::count_if(starts, HasEnded) == Count - 1; }));
  EXPECT_TRUE(Comes([] { return ManagedWindows().size() >= AllDocuments; }));
  EXPECT_EQ(ManagedWindows().size(), AllDocuments);
  EXPECT_EQ(std::ranges::count_if(starts, HasEnded), Count - 1);
  for (const auto& start : starts) {
    if (!HasEnded(start)) start->terminate();
    EXPECT_TRUE(HasEnded(start) ? start->exitCode() == 0 : IsTaken(*start));
  }
}

}  // namespace
}  // namespace vintrace::test
