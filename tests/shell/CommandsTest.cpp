// The commands of the menu bar on a scripted desktop.

#include <gtest/gtest.h>

#include "shell/App.h"
#include "shell/Window2.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

using CommandsTest = ScriptedProgram;

TEST_F(CommandsTest, CommandsOfADocumentNeedItInFrontAndThoseOfTheApplicationDoNot) {
  StartWith({"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  for (const auto* name : {"clcopy", "closewin"}) EXPECT_FALSE(host.Choose(name)) << name;
  EXPECT_EQ(host.clipboard, "earlier text");
  EXPECT_TRUE(host.Choose("EditAllCopy"));
  EXPECT_EQ(host.clipboard, "a.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.424\n");
  EXPECT_EQ(host.Titles(), (Lines{"Vintrace CS", "a.indd"}));
  EXPECT_TRUE(host.Choose("AllClose"));
  EXPECT_EQ(host.Titles(), Lines{});
  for (const auto* name : {"EditAllCopy", "AllClose"}) EXPECT_TRUE(host.Choose(name)) << name;

  App::Instance().RaiseOpenDocument(Document("b.indd"));
  MenuItem& close = Front()->closewin();
  close.AutoEnable = false;
  EXPECT_TRUE(host.Choose("closewin")) << "the window enables it";
  close.AutoEnable = true;
  EXPECT_EQ(host.Titles(), Lines{});
  EXPECT_FALSE(host.Choose("closewin"));
}

TEST_F(CommandsTest, CopyTakesTheFrontDocumentAndCopyAllTakesAllInOrder) {
  StartWith({"a.indd", "b\xFF\t.indd"});
  App::Instance().RaiseOpenDocument(Document("later.indd", 15));
  host.Windows().BringToFront(host.Windows().At(1));
  Front()->StaticText5().SetText(String("8.\0\xE4", 4));
  EXPECT_TRUE(host.Choose("clcopy"));
  const String front =
      "b\uFFFD\t.indd\tAdobe InDesign CS6\tWindows Edition\t8." + String(1, '\0') + "\uFFFD";
  EXPECT_EQ(host.clipboard, front);
  EXPECT_EQ(host.story.back(), "message: b\xFF\t.inddの情報をコピーしました");

  Window2::Instance();
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("EditAllCopy"));
  EXPECT_EQ(host.clipboard, front +
                                "\nlater.indd\tVer.15 CC2019より新しい\t\tサブバージョン不明\n"
                                "a.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.424\n");
  EXPECT_EQ(host.story.back(),
            "message: 全てのウィンドウの情報をコピーしました。\n"
            "表計算アプリやテキストエディタにペーストしてご利用ください。");
  EXPECT_TRUE(host.Choose("AllClose"));
  EXPECT_EQ(host.Titles(), Lines{}) << "this closes the about window too";
}

TEST_F(CommandsTest, ThereIsOneAboutWindowWithLinksThatTurnRedUnderTheMouse) {
  StartWith({"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  const auto about = Window2::Instance();
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("kono"));
  EXPECT_EQ(host.Titles(), (Lines{"Vintrace CS", "a.indd"}));
  for (Label* link : {&about->StaticText1(), &about->StaticText2()}) {
    link->RaiseMouseEnter();
    EXPECT_EQ(link->TextColor(), RGB(255, 0, 0));
    link->RaiseMouseExit();
    EXPECT_EQ(link->TextColor(), RGB(255, 255, 255));
  }
  about->Close();
  EXPECT_TRUE(host.Choose("kono"));
  EXPECT_EQ(host.Titles(), (Lines{"Vintrace CS", "a.indd"})) << "a new about window";
}

}  // namespace
}  // namespace vintrace::test
