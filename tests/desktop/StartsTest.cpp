// Several starts of the program, which give one running program.

#include <sys/types.h>

#include <QWidget>
#include <algorithm>
#include <csignal>

#include "desktop/DesktopFixture.h"
#include "platform/InstanceChannel.h"
#include "platform/posix/FileLock.h"

namespace vintrace::test {
namespace {

using StartsOnDesktop = ProgramOnDesktop;

bool IsActive(WId window) {
  return OutputOf("xdotool", {"getactivewindow"}).toULongLong() == window;
}

/// True when nobody holds the lock of a start, and so the program that started last listens.
bool NobodyIsStarting() {
  const auto place = ChannelPlace::OfThisDesktop();
  return posix::FileLock(place.folder + '/' + place.name + ".lock").TryLock();
}

/// The text of the messages that come in pieces of bytes.
std::string TextOf(const ClientMessages& messages) {
  std::string text;
  for (const auto& message : messages.heard) {
    if (message.format == 8)
      text.append(std::begin(message.data.data8), std::end(message.data.data8));
  }
  return text;
}

TEST_F(StartsOnDesktop, TheSecondBringsTheFirstToTheFrontForTheDesktop) {
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
  // Of the first of them, which has no id, nothing is told.
  const std::string told = R"(remove: ID="launcher \"of\" vintrace_TIME4294967295")" + String(1, 0);
  EXPECT_TRUE(Comes([&] { return TextOf(messages).starts_with(told); })) << TextOf(messages);
}

TEST_F(StartsOnDesktop, AHangingFirstIsReplacedAndEachDocumentOpensOnce) {
  StartWith({PathOfDocument("a.indd")});
  ASSERT_NE(WindowNamed("a.indd"), 0U);
  ASSERT_TRUE(Comes(NobodyIsStarting));
  const auto id = static_cast<pid_t>(program.processId());
  kill(id, SIGSTOP);
  const auto second = StartAgain({PathOfDocument("b.indd")});
  EXPECT_NE(WindowNamed("b.indd"), 0U);
  ASSERT_TRUE(Comes(NobodyIsStarting));
  kill(id, SIGCONT);
  EXPECT_TRUE(IsTaken(*StartAgain({PathOfDocument("c.indd")})));
  EXPECT_TRUE(HasWindows({"a.indd", "b.indd", "c.indd"}));
  program.terminate();
  AwaitEnd();
  EXPECT_TRUE(HasWindows({"b.indd", "c.indd"}));
  second->terminate();
  EXPECT_TRUE(IsTaken(*second));
}

TEST_F(StartsOnDesktop, WithoutADisplayItEndsWithTheStatus1) {
  for (const char* display : {"", ":987"}) {
    const Environment none("DISPLAY", display);
    const auto start = StartAgain({});
    EXPECT_FALSE(IsTaken(*start));
    EXPECT_EQ(start->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(start->exitCode(), 1);
  }
}

TEST_F(StartsOnDesktop, ADocumentThatCannotBeReadEndsTheProgramBehindAMessage) {
  StartWith({"/missing.indd", PathOfDocument("a.indd")});
  DismissMessage();
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
