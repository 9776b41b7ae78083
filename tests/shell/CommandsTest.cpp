// The commands of the menu bar, as their user's stories on a scripted desktop.

#include "platform/Commands.h"

#include <gtest/gtest.h>

#include "platform/Clipboard.h"
#include "platform/Exceptions.h"
#include "platform/Menu.h"
#include "resources/Endpoints.h"
#include "shell/App.h"
#include "shell/MainMenuBar.h"
#include "shell/Window2.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

using CommandsTest = ScriptedProgram;

constexpr std::string_view AllCopied =
    "message: 全てのウィンドウの情報をコピーしました。\n"
    "表計算アプリやテキストエディタにペーストしてご利用ください。";

String Row(const String& name) { return name + "\tAdobe InDesign CS6\tWindows Edition\t8.0.0.424"; }

void Describe(const MenuItem& item, const std::string& indent, Lines& lines) {
  lines.push_back(indent + item.Name() + ' ' + item.Text() + ' ' + item.KeyboardShortcut());
  for (const auto& child : item.Items()) Describe(*child, indent + "  ", lines);
}

TEST_F(CommandsTest, TheMenuBarHasItsItemsInTheirOrder) {
  StartWith({});
  Lines lines;
  for (const auto& menu : App::Instance().MenuBar()->Menus()) Describe(*menu, "", lines);
  EXPECT_EQ(lines, (Lines{
                       "FileMenu ファイル ",
                       "  hiraku 開く Cmd+O",
                       "  FileQuit 終了 Cmd+Q",
                       "EditMenu 編集 ",
                       "  clcopy コピー Cmd+C",
                       "  EditAllCopy 全てコピー Cmd+Option+C",
                       "  closewin 閉じる Cmd+W",
                       "  AllClose 全て閉じる Cmd+Option+W",
                       "  upchk Update Check Cmd+R",
                       "  EditSeparator2 - ",
                       "  kono Vintrace ... ",
                   }));
}

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
  host.Windows().At(0)->Close();
  EXPECT_EQ(Choosable(), all);
  EXPECT_TRUE(host.Choose("closewin"));
  EXPECT_EQ(Choosable(), ofTheApplication);
}

TEST_F(CommandsTest, WithoutAnInspectionWindowCopyingAndClosingDoNothing) {
  StartWith({});
  for (const auto* name : {"clcopy", "EditAllCopy", "closewin", "AllClose"}) {
    EXPECT_FALSE(host.Choose(name)) << name;
  }
  EXPECT_FALSE(App::Instance()._EditAllCopy_Action());
  EXPECT_FALSE(App::Instance()._AllClose_Action());
  EXPECT_EQ(host.story, Lines{});
  EXPECT_EQ(host.clipboard, "what it held before");
}

TEST_F(CommandsTest, CopyTakesTheWindowInFrontAndNoOther) {
  StartWith({"a.indd", "二つ目.indd", "c.indd"});
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("clcopy"));
  EXPECT_EQ(host.clipboard, Row("二つ目.indd"));
  EXPECT_EQ(host.story, Lines{"message: 二つ目.inddの情報をコピーしました"});
}

TEST_F(CommandsTest, CopyAllTakesTheWindowsFrontToBack) {
  StartWith({"a.indd", "b.indd", "a.indd"});
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("EditAllCopy"));
  EXPECT_EQ(host.clipboard, Row("b.indd") + '\n' + Row("a.indd") + '\n' + Row("a.indd") + '\n');
  EXPECT_EQ(host.story, Lines{std::string(AllCopied)});
  Front()->PushButton2().RaiseAction();
  EXPECT_TRUE(host.Choose("EditAllCopy"));
  EXPECT_EQ(host.clipboard, Row("a.indd") + '\n' + Row("a.indd") + '\n');
}

TEST_F(CommandsTest, RowsHaveFourFieldsWhateverTheLabelsSay) {
  host.handedOver.emplace_back(Document("later.indd", 15));
  host.handedOver.emplace_back(Document("b\xFF\t.indd"));
  _Main();
  Front()->StaticText5().SetText(String("8.\0\xE4", 4));
  EXPECT_TRUE(host.Choose("EditAllCopy"));
  EXPECT_EQ(host.clipboard,
            "b\uFFFD\t.indd\tAdobe InDesign CS6\tWindows Edition\t8." + String(1, '\0') +
                "\uFFFD\nlater.indd\tVer.15 CC2019より新しい\t\tサブバージョン不明\n");
}

TEST_F(CommandsTest, WindowsOfOtherClassesAreLeftOutOfCopyingAndClosedWithTheOthers) {
  StartWith({"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("EditAllCopy"));
  EXPECT_EQ(host.clipboard, Row("a.indd") + '\n');
  EXPECT_TRUE(host.Choose("AllClose"));
  EXPECT_EQ(host.Titles(), Lines{});

  EXPECT_TRUE(host.Choose("kono"));
  App::Instance()._EditAllCopy_Action();
  EXPECT_EQ(host.clipboard, Row("a.indd") + '\n') << "there is nothing to copy";
}

TEST_F(CommandsTest, CloseTakesTheWindowInFrontAndTheOthersKeepTheirOrder) {
  StartWith({"a.indd", "b.indd", "c.indd"});
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("closewin"));
  EXPECT_EQ(host.Titles(), (Lines{"c.indd", "a.indd"}));
  EXPECT_EQ(host.story, Lines{});
}

TEST_F(CommandsTest, TheWindowsHandlerGoesBeforeTheApplications) {
  StartWith({"a.indd"});
  Lines story;
  App::Instance().AddMenuHandler("clcopy", [&] {
    story.emplace_back("application");
    return false;
  });
  Front()->AddMenuHandler("upchk", [&] {
    story.emplace_back("window");
    return false;
  });
  host.Choose("clcopy");
  host.Choose("upchk");
  EXPECT_EQ(story, Lines{"window"});
  EXPECT_EQ(host.story.size(), 1U) << "the message of the window's own copying";
}

TEST_F(CommandsTest, AClipboardThatIsClosedTakesNothing) {
  Clipboard clipboard;
  clipboard.SetText("a");
  clipboard.Close();
  EXPECT_THROW(clipboard.SetText("b"), NilObjectException);
  EXPECT_EQ(host.clipboard, "a");
}

/// Tells the titles of windows in the order in which they are closed.
class ClosingHost : public ScriptedHost {
 public:
  void Closed(Window& window) override { story.push_back("closed: " + window.Title()); }
};

TEST(AllClose, ClosesFromBackToFrontAndTheProgramGoesOn) {
  ClosingHost host;
  _Main();
  for (const auto* title : {"a", "b", "c"}) Window::New<Window1>()->SetTitle(title);
  host.story.clear();
  EXPECT_TRUE(host.Choose("AllClose"));
  EXPECT_EQ(host.story, (Lines{"closed: a", "closed: b", "closed: c"}));
}

TEST_F(CommandsTest, OpenAndQuitWorkWhateverIsInFront) {
  StartWith({"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  host.choices = {Document("chosen.indd")};
  EXPECT_TRUE(host.Choose("hiraku"));
  EXPECT_EQ(host.Titles(), (Lines{"chosen.indd", "Vintrace CS", "a.indd"}));
  EXPECT_TRUE(host.Choose("FileQuit"));
  EXPECT_EQ(host.story.back(), "quit: 0");
}

TEST_F(CommandsTest, ThereIsOneAboutWindowUntilAClickClosesIt) {
  StartWith({"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  const auto about = host.Windows().At(0);
  host.Windows().BringToFront(host.Windows().At(1));
  EXPECT_TRUE(host.Choose("kono"));
  EXPECT_EQ(host.Titles(), (Lines{"Vintrace CS", "a.indd"}));
  EXPECT_EQ(Window2::Instance(), about);

  EXPECT_TRUE(about->RaiseMouseDown());
  about->RaiseMouseUp();
  EXPECT_EQ(host.Titles(), Lines{"a.indd"});
  EXPECT_TRUE(host.Choose("kono"));
  EXPECT_NE(host.Windows().At(0), about);
  EXPECT_EQ(Window2::Instance()->StaticText5().Text(), "Ver. 1.20");
}

TEST_F(CommandsTest, TheLinksOfTheAboutWindowFollowTheMouseAndLeaveItOpen) {
  StartWith({});
  const auto about = Window2::Instance();
  host.story.clear();
  const String page(endpoints::WebPage);
  const String mail(endpoints::Mail);
  EXPECT_EQ(about->StaticText1().Text() + '/', page);
  EXPECT_EQ(about->StaticText2().Text(), mail);
  for (Label* link : {&about->StaticText1(), &about->StaticText2()}) {
    EXPECT_EQ(link->TextColor(), RGB(255, 255, 255));
    EXPECT_TRUE(link->Underline());
    link->RaiseMouseEnter();
    EXPECT_EQ(link->TextColor(), RGB(255, 0, 0));
    EXPECT_TRUE(link->RaiseMouseDown());
    link->RaiseMouseExit();
    EXPECT_EQ(link->TextColor(), RGB(255, 255, 255));
    link->RaiseMouseUp();
  }
  EXPECT_EQ(host.story, (Lines{"url: " + page, "url: " + mail}));
  EXPECT_TRUE(about->IsOpen());
}

}  // namespace
}  // namespace vintrace::test
