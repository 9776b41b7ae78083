// The program from start to end on a scripted desktop.

#include "shell/App.h"

#include <gtest/gtest.h>

#include "platform/Exceptions.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

using AppTest = ScriptedProgram;

TEST_F(AppTest, AStartLoadsTheStoreWaitsFiveSecondsForEachServiceAndAsksNothing) {
  _Main();
  EXPECT_TRUE(folder.Item("data/VNTR.ini").Exists());
  EXPECT_EQ(App::Instance().apploc, Lines{});
  folder.File("data/VNTR.ini", "/A.app\n");
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  host.network.peers = {{.ends = false}, {.ends = false}};
  host.network.whileWaiting = [] { EXPECT_EQ(App::Instance().apploc, Lines{"/A.app"}); };
  App::Instance().RaiseOpen();
  constexpr std::int64_t TenSeconds = 600;
  EXPECT_GE(host.network.ticks, TenSeconds);
  EXPECT_LE(host.network.ticks, TenSeconds + 10);
  EXPECT_EQ(host.story, Lines{});
}

/// A desktop of a program that is installed in part.
class HostWithoutNetwork : public ScriptedHost {
 public:
  vintrace::Network& Network() override { throw RuntimeException("network.so is missing"); }
};

TEST(Services, WithoutANetworkFailAsOthersDo) {
  const TemporaryFolder folder;
  const Environment dataHome("XDG_DATA_HOME", folder.Path().c_str());
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  HostWithoutNetwork host;
  _Main();
  EXPECT_EQ(host.story, Lines{});
  host.Choose("upchk");
  EXPECT_EQ(host.story, Lines{"message: 通信に障害があり、確認できませんでした。"});
}

/// A desktop on which nothing runs.
class BrokenHost : public ScriptedHost {
 public:
  void Run() override { throw RuntimeException("broken"); }
};

TEST(Main, WhatBreaksAtTheStartIsReportedAndEndsTheProgram) {
  BrokenHost host;
  _Main();
  EXPECT_EQ(host.story, (Lines{"message: 予期しないエラーが起こりました。\nbroken", "quit: 1"}));
}

TEST_F(AppTest, AStoreThatCannotBeReadIsReportedOnceAndTheProgramGoesOn) {
  std::filesystem::create_directories(folder.Path() / "data/VNTR.ini");
  host.handedOver = {Document("a.indd")};
  _Main();
  EXPECT_EQ(host.story,
            (Lines{"window", "message: 予期しないエラーが起こりました。\n" +
                                 folder.Item("data/VNTR.ini").NativePath() + ": Is a directory"}));
}

TEST_F(AppTest, EachDocumentHasAWindowOfItsOwnAndAFileOfAnotherNameIsNotEvenOpened) {
  host.handedOver = {Document("a.indd"), folder.Item("missing.pdf"), Document("B.INDD"),
                     folder.Item("indd"), Document("a.indd")};
  _Main();
  EXPECT_EQ(host.story, Lines(3, "window"));
  EXPECT_EQ(host.Titles(), (Lines{"a.indd", "B.INDD", "a.indd"}));
  EXPECT_EQ(Front()->Canvas1().Backdrop(), pictures::cs6());
  InspectionAt(1)->PushButton2().RaiseAction();
  EXPECT_EQ(host.Titles(), (Lines{"B.INDD", "a.indd"})) << "the button closes the window in front";
}

TEST_F(AppTest, AFailureEndsTheProgramWithAMessageAndOpensNoFurtherDocument) {
  host.handedOver = {folder.Item("missing.indd"), Document("good.indd")};
  _Main();
  EXPECT_EQ(host.story,
            (Lines{"window", "message: エラーが起こりましたので\n終了します", "quit: 0"}));
}

TEST_F(AppTest, WithoutADocumentTheUserIsAskedForOneAndMayCancel) {
  const std::string question = "open dialog: indd (.indd)";
  host.choices = {Document("chosen.indd"), Document("other.pdf")};
  host.handedOver = {std::nullopt, std::nullopt, std::nullopt};
  _Main();
  EXPECT_EQ(host.story, (Lines{question, "window", question, question}));
  EXPECT_FALSE(App::Instance()._hiraku_Action());
  EXPECT_EQ(host.Titles(), Lines{"chosen.indd"});
}

}  // namespace
}  // namespace vintrace::test
