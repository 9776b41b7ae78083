// Repeated starts of the program, which share one running instance.

#include <sys/types.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QWidget>
#include <algorithm>
#include <csignal>

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

using StartsOnDesktop = ProgramOnDesktop;

bool IsActive(WId window) {
  return OutputOf("xdotool", {"getactivewindow"}).toULongLong() == window;
}

/// The text of the messages of format 8, each of which carries a piece of it.
std::string TextOf(const ClientMessages& messages) {
  std::string text;
  for (const auto& message : messages.heard) {
    if (message.format == 8)
      text.append(std::begin(message.data.data8), std::end(message.data.data8));
  }
  return text;
}

TEST_F(StartsOnDesktop, ASecondStartRaisesTheFirstAndEndsStartupNotification) {
  StartWith({PathOfDocument("a.indd")});
  const WId a = WindowNamed("a.indd");
  QWidget other;
  other.show();
  const ClientMessages messages;
  for (const char* id : {"", R"(launcher "of" vintrace_TIME4294967295)"}) {
    const Environment startup("DESKTOP_STARTUP_ID", id);
    OutputOf("xdotool", {"windowactivate", "--sync", QString::number(other.winId())});
    ASSERT_TRUE(Comes([&] { return IsActive(other.winId()); }));
    EXPECT_TRUE(IsTaken(*StartAgain({})));
    EXPECT_TRUE(Comes([&] { return IsActive(a); })) << id;
  }
  // The first of the two starts has no id, so no message is sent for it.
  const std::string told = R"(remove: ID="launcher \"of\" vintrace_TIME4294967295")" + String(1, 0);
  EXPECT_TRUE(Comes([&] { return TextOf(messages).starts_with(told); })) << TextOf(messages);
}

TEST_F(StartsOnDesktop, SimultaneousStartsOpenEachDocumentOnce) {
  Lines names;
  std::vector<std::unique_ptr<QProcess>> starts;
  for (char letter = 'a'; letter <= 'l'; ++letter) {
    names.push_back(String(1, letter) + ".indd");
    starts.push_back(StartAgain({PathOfDocument(names.back())}));
  }
  EXPECT_TRUE(HasWindows(names));
  const auto runs = [](const auto& start) { return start->state() != QProcess::NotRunning; };
  EXPECT_TRUE(Comes([&] { return std::ranges::count_if(starts, runs) == 1; }));
  for (const auto& start : starts) start->terminate();
  for (const auto& start : starts) EXPECT_TRUE(IsTaken(*start));
}

TEST_F(StartsOnDesktop, AStartBesideAHungProgramRunsAloneAndOpensItsDocumentOnce) {
  StartWith({PathOfDocument("a.indd")});
  ASSERT_NE(WindowNamed("a.indd"), 0U);
  const auto id = static_cast<pid_t>(program.processId());
  kill(id, SIGSTOP);
  const auto second = StartAgain({PathOfDocument("b.indd")});
  EXPECT_NE(WindowNamed("b.indd"), 0U);
  kill(id, SIGCONT);
  EXPECT_TRUE(IsTaken(*StartAgain({PathOfDocument("c.indd")})));
  EXPECT_TRUE(HasWindows({"a.indd", "b.indd", "c.indd"}));
  program.terminate();
  AwaitEnd();
  EXPECT_TRUE(HasWindows({"b.indd"}));
  second->terminate();
  EXPECT_TRUE(IsTaken(*second));
}

TEST_F(StartsOnDesktop, WithoutASessionBusEachStartRunsOnItsOwn) {
  const Environment none("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
  StartWith({PathOfDocument("a.indd")});
  const auto second = StartAgain({PathOfDocument("b.indd")});
  EXPECT_TRUE(HasWindows({"a.indd", "b.indd"}));
  program.terminate();
  AwaitEnd();
  EXPECT_TRUE(HasWindows({"b.indd"}));
  second->terminate();
  EXPECT_TRUE(IsTaken(*second));
}

TEST_F(StartsOnDesktop, OtherBusClientsCanOpenLocalFilesAndNothingElse) {
  StartWith({});
  ASSERT_NE(WindowNamed("Vintrace"), 0U);
  const auto answer = [](const char* method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(VINTRACE_BUS_NAME, "/example/vt/Vintrace",
                                               "org.freedesktop.Application", method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call, QDBus::Block, Patience).type();
  };
  const QVariantMap none;
  const QStringList uris{QString(AddressOf("a\xFF.indd").trimmed()), "http://vt.example/b.indd",
                         "file://elsewhere.example/c.indd", ""};
  EXPECT_EQ(answer("Open", {uris, none}), QDBusMessage::ReplyMessage);
  EXPECT_EQ(answer("Activate", {none}), QDBusMessage::ReplyMessage);
  EXPECT_EQ(answer("ActivateAction", {"quit", QVariantList(), none}), QDBusMessage::ReplyMessage);
  EXPECT_EQ(answer("Open", {uris}), QDBusMessage::ErrorMessage);
  EXPECT_EQ(answer("Close", {none}), QDBusMessage::ErrorMessage);
  EXPECT_TRUE(HasWindows({"a\uFFFD.indd"}));
}

TEST_F(StartsOnDesktop, WithoutADisplayTheProgramExitsWithStatus1) {
  for (const char* display : {"", ":987"}) {
    const Environment none("DISPLAY", display);
    const auto start = StartAgain({});
    EXPECT_FALSE(IsTaken(*start));
    EXPECT_EQ(start->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(start->exitCode(), 1);
  }
}

TEST_F(StartsOnDesktop, AnUnreadableDocumentEndsTheProgramAfterAMessage) {
  StartWith({"/missing.indd", PathOfDocument("a.indd")});
  DismissMessage();
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
