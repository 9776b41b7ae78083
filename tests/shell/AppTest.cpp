// The program from start to end on a scripted desktop.

#include "shell/App.h"

#include <gtest/gtest.h>

#include "platform/Exceptions.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

using AppTest = ScriptedProgram;

TEST_F(AppTest, TheStartLoadsTheStoreAndWaitsFiveSecondsForEachService) {
  std::filesystem::create_directory(folder.Path() / "data");
  folder.File("data/VNTR.ini", "/A.app\n");
  const Environment service("VINTRACE_TEST_SERVICE", "service.example");
  host.network.peers = {{.ends = false}, {.ends = false}};
  host.network.whileWaiting = [] { EXPECT_EQ(App::Instance().apploc, Lines{"/A.app"}); };
  _Main();
  constexpr std::int64_t TenSeconds = 600;
  EXPECT_GE(host.network.ticks, TenSeconds);
  EXPECT_LE(host.network.ticks, TenSeconds + 10);
  EXPECT_EQ(host.story, Lines{});
  EXPECT_EQ(ApplicationVersionText(1, 10, 3), "1103");
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

TEST_F(AppTest, StartsWithoutAWindowOrAQuestion) {
  _Main();
  EXPECT_EQ(host.story, Lines{});
  EXPECT_EQ(host.Windows().Count(), 0);
  EXPECT_EQ(App::Instance().LongVersion(), "1.20");
}

TEST_F(AppTest, TheFirstStartMakesTheStoreAndALaterOneLoadsIt) {
  const FolderItem file = folder.Item("data/VNTR.ini");
  _Main();
  EXPECT_TRUE(file.Exists());
  EXPECT_EQ(App::Instance().apploc, Lines{});
  EXPECT_EQ(App::Instance().myf.value().NativePath(), file.NativePath());
  folder.File("data/VNTR.ini", "/A.app\n");
  App::Instance().RaiseOpen();
  EXPECT_EQ(App::Instance().apploc, Lines{"/A.app"});
}

TEST_F(AppTest, AStoreThatCannotBeReadIsReportedOnceAndTheProgramGoesOn) {
  std::filesystem::create_directories(folder.Path() / "data/VNTR.ini");
  host.handedOver = {Document("a.indd")};
  _Main();
  EXPECT_EQ(host.story,
            (Lines{"window", "message: 予期しないエラーが起こりました。\nIs a directory"}));
  EXPECT_EQ(host.Titles(), Lines{"a.indd"});
}

TEST_F(AppTest, ADocumentIsToldInItsWindow) {
  host.handedOver = {Document("a.indd")};
  _Main();
  ASSERT_EQ(host.Titles(), Lines{"a.indd"});
  EXPECT_EQ(Front()->Label1().Text(), "a.indd");
  EXPECT_EQ(Front()->inddDoc->NativePath(), folder.Item("a.indd").NativePath());
  EXPECT_EQ(Front()->StaticText2().Text(), "Adobe InDesign CS6");
  EXPECT_EQ(Front()->StaticText3().Text(), "Windows Edition");
  EXPECT_EQ(Front()->StaticText5().Text(), "8.0.0.424");
  EXPECT_EQ(Front()->Canvas1().Backdrop(), pictures::cs6());
  EXPECT_TRUE(Front()->PushButton3().Visible());
  EXPECT_EQ(Front()->shp, "");
}

TEST_F(AppTest, EachHandOverOpensAWindowOfItsOwn) {
  host.handedOver = {Document("a.indd"), Document("B.INDD"), Document("a.indd")};
  _Main();
  EXPECT_EQ(host.Titles(), (Lines{"a.indd", "B.INDD", "a.indd"}));
  const auto first = InspectionAt(2);
  Front()->shp = "chosen here";
  Front()->inddDoc.reset();
  EXPECT_EQ(first->shp, "");
  EXPECT_TRUE(first->inddDoc);
}

TEST_F(AppTest, AFileOfAnotherNameIsNotEvenOpened) {
  host.handedOver = {folder.Item("missing.pdf"), folder.Item("indd")};
  _Main();
  EXPECT_EQ(host.story, Lines{});
}

TEST_F(AppTest, AFailureEndsTheProgramWithAMessageAndOpensNoFurtherDocument) {
  host.handedOver = {folder.Item("missing.indd"), Document("good.indd")};
  _Main();
  EXPECT_EQ(host.story,
            (Lines{"window", "message: エラーが起こりましたので\n終了します", "quit: 0"}));
}

TEST_F(AppTest, WithoutADocumentTheUserIsAskedForOne) {
  host.choices = {Document("chosen.indd")};
  host.handedOver = {std::nullopt, std::nullopt};
  _Main();
  EXPECT_EQ(host.story,
            (Lines{"open dialog: indd (.indd)", "window", "open dialog: indd (.indd)"}));
  EXPECT_EQ(host.Titles(), Lines{"chosen.indd"});
}

TEST_F(AppTest, TheOpenCommandAsksAndACancelLeavesNothing) {
  _Main();
  EXPECT_FALSE(App::Instance()._hiraku_Action());
  EXPECT_EQ(host.Titles(), Lines{});
  host.choices = {Document("chosen.indd"), Document("other.pdf")};
  EXPECT_FALSE(App::Instance()._hiraku_Action());
  EXPECT_FALSE(App::Instance()._hiraku_Action());
  EXPECT_EQ(host.Titles(), Lines{"chosen.indd"});
}

TEST_F(AppTest, ClosingTheLastWindowDoesNotQuit) {
  host.handedOver = {Document("a.indd"), Document("b.indd")};
  _Main();
  const auto behind = InspectionAt(1);
  behind->PushButton2().RaiseAction();
  EXPECT_EQ(host.Titles(), Lines{"a.indd"}) << "the button closes the window in front";
  Front()->PushButton2().RaiseAction();
  EXPECT_EQ(host.Titles(), Lines{});
  EXPECT_EQ(host.story, (Lines{"window", "window"}));
}

}  // namespace
}  // namespace vintrace::test
