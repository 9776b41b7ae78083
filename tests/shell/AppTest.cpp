// The program from start to end on a scripted desktop.

#include "shell/App.h"

#include <gtest/gtest.h>

#include "platform/text/Exceptions.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

using AppTest = ScriptedProgram;

TEST_F(AppTest, StartWaitsFiveSecondsPerSilentServiceAndAbortsEndlessReplies) {
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  const ScriptedNetwork::Peer silent{.ends = false};
  const ScriptedNetwork::Peer endless{.replies = {{"HTTP/1.0 200 OK\r\n\r\n", String(65'537, 'x')}},
                                      .ends = false};
  for (const auto& [peer, ticks] : {std::pair(silent, 600), std::pair(endless, 300)}) {
    host.network.peers = {peer, silent};
    host.network.ticks = 0;
    _Main();
    EXPECT_GE(host.network.ticks, ticks);
    EXPECT_LE(host.network.ticks, ticks + 10);
  }
  EXPECT_EQ(host.story, Lines{});
}

TEST_F(AppTest, ATooLongReplyAnnouncesNoUpdateWhateverItBeginsWith) {
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  host.network.peers = {
      {.replies = {{"HTTP/1.0 200 OK\r\n\r\ntrue", String(65'536, 'x')}}, .ends = false}};
  _Main();
  EXPECT_EQ(host.story, Lines{});
}

TEST_F(AppTest, OfflineSendsNothingAndLoadsTheLocationsAllTheSame) {
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  const Environment offline("VINTRACE_OFFLINE", "1");
  std::filesystem::create_directories(folder.Path() / "data");
  folder.File("data/VNTR.ini", "/A\n");
  _Main();
  host.Choose("upchk");
  EXPECT_EQ(host.network.wire, Lines{});
  EXPECT_EQ(App::Instance().apploc, Lines{"/A"});
  EXPECT_EQ(host.story, Lines{"message: 通信に障害があり、確認できませんでした。"});
}

/// A host without memory for a window.
class FullHost : public ScriptedHost {
 public:
  void Show(Window& /*window*/) override { throw std::bad_alloc(); }
};

TEST(VersionCheck, AnyExceptionEndsTheProgramAfterAMessage) {
  const TemporaryFolder folder;
  const Environment dataHome("XDG_DATA_HOME", folder.Path().c_str());
  FullHost host;
  host.handedOver = {folder.File("a.indd", "")};
  _Main();
  EXPECT_EQ(host.story, (Lines{"message: エラーが起こりましたので\n終了します", "quit: 0"}));
}

/// A host of a program whose network module is not installed.
class HostWithoutNetwork : public ScriptedHost {
 public:
  vintrace::Network& Network() override { throw RuntimeException("network.so is missing"); }
};

TEST(Services, WithoutTheNetworkModuleTheUpdateCheckReportsAFailure) {
  const TemporaryFolder folder;
  const Environment dataHome("XDG_DATA_HOME", folder.Path().c_str());
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  HostWithoutNetwork host;
  _Main();
  host.Choose("upchk");
  EXPECT_EQ(host.story, Lines{"message: 通信に障害があり、確認できませんでした。"});
}

/// A host whose event loop fails.
class BrokenHost : public ScriptedHost {
 public:
  void Run() override { throw RuntimeException("broken"); }
};

TEST(Main, AnExceptionAtStartupIsReportedAndEndsTheProgram) {
  BrokenHost host;
  _Main();
  EXPECT_EQ(host.story, (Lines{"message: 予期しないエラーが起こりました。\nbroken", "quit: 1"}));
}

TEST_F(AppTest, AnUnreadableSettingsFileIsReportedByPath) {
  std::filesystem::create_directories(folder.Path() / "data/VNTR.ini");
  _Main();
  EXPECT_EQ(host.story, Lines{"message: 予期しないエラーが起こりました。\n" +
                              folder.Item("data/VNTR.ini").NativePath() + ": Is a directory"});
}

TEST_F(AppTest, OpensOnlyInddFilesAndAsksForOneIfGivenNone) {
  host.handedOver = {Document("a.indd"),  folder.Item("missing.pdf"), Document("B.INDD"),
                     folder.Item("indd"), Document("a.indd"),         std::nullopt};
  host.choices = {folder.Item("other.pdf"), Document("chosen.indd")};
  _Main();
  for (int time = 0; time < 2; ++time) EXPECT_TRUE(host.Choose("hiraku"));
  const std::string asked = "open dialog: indd (.indd)";
  EXPECT_EQ(host.story, (Lines{"window", "window", "window", asked, asked, "window", asked}));
  EXPECT_EQ(host.Titles(), (Lines{"chosen.indd", "a.indd", "B.INDD", "a.indd"}));
}

TEST_F(AppTest, AWindowClosedInAHandlerLivesUntilItReturnsButGetsNoEvents) {
  const std::weak_ptr<Window1> window = Window::New<Window1>();
  PushButton& button = window.lock()->PushButton2();
  int presses = 0;
  button.Action = [&] {
    if (++presses > 1) return;
    Front()->Close();
    ASSERT_FALSE(window.expired());
    button.RaiseAction();
  };
  button.RaiseAction();
  EXPECT_EQ(presses, 1);
  EXPECT_TRUE(window.expired());
}

}  // namespace
}  // namespace vintrace::test
