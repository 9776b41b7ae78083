// The commands of the menu bar, as their user's stories on a scripted desktop.

#include "platform/Commands.h"

#include <gtest/gtest.h>

#include "platform/Menu.h"
#include "resources/Endpoints.h"
#include "shell/App.h"
#include "shell/MainMenuBar.h"
#include "shell/Window2.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

using CommandsTest = ScriptedProgram;

/// The names of the items that can be chosen.
Lines Choosable() {
  UpdateMenuItems();
  Lines names;
  for (const auto& menu : MainMenuBar::Instance()->Menus()) {
    for (const auto& item : menu->Items()) {
      if (item->Enabled()) names.push_back(item->Name());
    }
  }
  return names;
}

TEST_F(CommandsTest, TheWindowInFrontDecidesWhatCanBeChosen) {
  const Lines ofTheApplication{"hiraku", "FileQuit", "upchk", "kono"};
  const Lines all{"hiraku",   "FileQuit", "clcopy", "EditAllCopy",
                  "closewin", "AllClose", "upchk",  "kono"};
  StartWith({"a.indd"});
  EXPECT_EQ(Choosable(), all);
  EXPECT_TRUE(host.Choose("kono"));
  EXPECT_EQ(Choosable(), ofTheApplication);
  for (const auto* name : {"clcopy", "EditAllCopy", "AllClose"}) EXPECT_FALSE(host.Choose(name));
  host.Windows().At(0)->Close();
  EXPECT_TRUE(host.Choose("closewin"));
  EXPECT_EQ(Choosable(), ofTheApplication);
  EXPECT_EQ(host.story, Lines(2, "window")) << "the about window, made and shown";
  EXPECT_EQ(host.clipboard, "what it held before");
}

TEST_F(CommandsTest, CopyTakesTheWindowInFrontAndCopyAllTheDocumentsFrontToBack) {
  StartWith({"a.indd", "b\xFF\t.indd"});
  App::Instance().RaiseOpenDocument(Document("later.indd", 15));
  host.Windows().BringToFront(host.Windows().At(1));
  Front()->StaticText5().SetText(String("8.\0\xE4", 4));
  bool second = false;
  App::Instance().AddMenuHandler("clcopy", [&] { return second = true; });
  EXPECT_TRUE(host.Choose("clcopy"));
  EXPECT_FALSE(second) << "the window has a handler of its own";
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
}

/// Tells the titles of windows in the order in which they are closed.
class ClosingHost : public ScriptedHost {
 public:
  void Closed(Window& window) override { story.push_back("closed: " + window.Title()); }
};

TEST(AllClose, ClosesFromBackToFrontWhateverTheWindows) {
  ClosingHost host;
  _Main();
  Window2::Instance();
  App::Instance()._EditAllCopy_Action();
  EXPECT_EQ(host.story, Lines{"window"}) << "there is nothing to copy";
  for (const auto* title : {"a", "b"}) Window::New<Window1>()->SetTitle(title);
  host.story.clear();
  EXPECT_TRUE(host.Choose("AllClose"));
  EXPECT_EQ(host.story, (Lines{"closed: Vintrace CS", "closed: a", "closed: b"}));
}

TEST_F(CommandsTest, ThereIsOneAboutWindowWhoseLinksFollowTheMouseUntilAClickBesideThemClosesIt) {
  StartWith({"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  const auto about = Window2::Instance();
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("kono"));
  host.choices = {Document("chosen.indd")};
  EXPECT_TRUE(host.Choose("hiraku"));
  EXPECT_EQ(host.Titles(), (Lines{"chosen.indd", "Vintrace CS", "a.indd"}));
  EXPECT_EQ(about->StaticText5().Text(), "Ver. 1.20");

  const std::pair<Label*, String> links[] = {
      {&about->StaticText1(), String(endpoints::WebPage)},
      {&about->StaticText2(), String(endpoints::Mail)},
  };
  for (const auto& [link, address] : links) {
    EXPECT_EQ(link->Text(), address.substr(0, address.find_last_not_of('/') + 1));
    EXPECT_EQ(link->TextColor(), RGB(255, 255, 255));
    link->RaiseMouseEnter();
    EXPECT_EQ(link->TextColor(), RGB(255, 0, 0));
    EXPECT_TRUE(link->RaiseMouseDown());
    link->RaiseMouseExit();
    EXPECT_EQ(link->TextColor(), RGB(255, 255, 255));
    link->RaiseMouseUp();
    EXPECT_EQ(host.story.back(), "url: " + address);
  }
  EXPECT_TRUE(about->RaiseMouseDown());
  about->RaiseMouseUp();
  EXPECT_EQ(host.Titles(), (Lines{"chosen.indd", "a.indd"}));
  EXPECT_TRUE(host.Choose("kono"));
  EXPECT_EQ(host.Titles(), (Lines{"Vintrace CS", "chosen.indd", "a.indd"}));
}

}  // namespace
}  // namespace vintrace::test
