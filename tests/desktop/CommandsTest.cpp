// The menus, their keys and the windows that they open, by the user's own mouse and keyboard.

#include <QMenuBar>

#include "desktop/DesktopFixture.h"
#include "platform/qt/Fonts.h"

namespace vintrace::test {
namespace {

using CommandsOnDesktop = ProgramOnDesktop;

std::string Row(const std::string& name) {
  return name + "\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397";
}

TEST_F(CommandsOnDesktop, KeysCopyFrontToBackAndCloseAndQuit) {
  StartWith(
      {PathOfDocument("a.indd"), PathOfDocument("二つ目.indd"), PathOfDocument("later.indd", 15)});
  const WId a = WindowNamed("a.indd");
  const WId second = WindowNamed("二つ目.indd");
  ASSERT_NE(a, 0U);
  ASSERT_NE(second, 0U);
  ASSERT_TRUE(HasWindows({"a.indd", "later.indd", "二つ目.indd"}));

  Press(second, {"ctrl+c"});
  DismissMessage();
  EXPECT_EQ(Clipboard(), Row("二つ目.indd"));
  Press(a, {"ctrl+alt+c"});
  DismissMessage();
  EXPECT_EQ(Clipboard(), Row("a.indd") + '\n' + Row("二つ目.indd") +
                             "\nlater.indd\tVer.15 CC2019より新しい\t\tサブバージョン不明\n");
  Press(a, {"ctrl+c"});
  DismissMessage();
  EXPECT_EQ(Clipboard(), Row("a.indd"));

  Press(a, {"ctrl+w"});
  ASSERT_TRUE(HasWindows({"later.indd", "二つ目.indd"}));
  Press(second, {"ctrl+alt+w"});
  ASSERT_TRUE(HasWindows({"Vintrace"}));
  Press(WindowNamed("Vintrace"), {"ctrl+q"});
  AwaitEnd();
}

/// Where the second menu stands in a bar of the program.
QPoint SecondMenu() {
  QMenuBar bar;
  bar.setFont(qt::FontOf("Osaka", 0, false));
  bar.addMenu("ファイル");
  const QAction* second = bar.addMenu("編集")->menuAction();
  bar.resize(bar.sizeHint());
  return bar.actionGeometry(const_cast<QAction*>(second)).center();
}

TEST_F(CommandsOnDesktop, TheMouseOpensMenusAndTheAboutWindowAndClosesIt) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  ASSERT_NE(standIn, 0U);
  Click(standIn, SecondMenu());
  const WId menu = OpenMenu();
  ASSERT_NE(menu, 0U);
  const QSize size = Screenshot(menu).size();
  constexpr int LastItem = 10;  // Pixels above the lower edge.
  Click(menu, {size.width() / 2, size.height() - LastItem});
  const WId about = WindowNamed("Vintrace CS");
  ASSERT_NE(about, 0U);
  EXPECT_EQ(Screenshot(about).size(), QSize(460, 300));

  Click(about, {100, 280});
  ASSERT_TRUE(HasWindows({"Vintrace"}));
  Press(standIn, {"alt+F4"});
  AwaitEnd();
}

TEST_F(CommandsOnDesktop, TheKeyboardOpensMenusAndQuitsFromTheAboutWindow) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  ASSERT_NE(standIn, 0U);
  Press(standIn, {"Alt_L", "Right", "Down"});
  ASSERT_NE(OpenMenu(), 0U);
  OutputOf("xdotool", {"key", "Up", "Return"});
  const WId about = WindowNamed("Vintrace CS");
  ASSERT_NE(about, 0U);
  ASSERT_TRUE(HasWindows({"Vintrace", "Vintrace CS"}));
  Press(about, {"ctrl+q"});
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
