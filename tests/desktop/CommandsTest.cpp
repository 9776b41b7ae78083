// The menus, their keys and the windows that they open, by the user's own mouse and keyboard.

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

using CommandsOnDesktop = ProgramOnDesktop;

TEST_F(CommandsOnDesktop, KeysCopyFrontToBackAndCloseAndTheMouseQuitsByTheMenu) {
  StartWith(
      {PathOfDocument("a.indd"), PathOfDocument("二つ目.indd"), PathOfDocument("later.indd", 15)});
  ASSERT_TRUE(HasWindows({"a.indd", "later.indd", "二つ目.indd"}));
  const WId a = WindowNamed("a.indd");
  const WId second = WindowNamed("二つ目.indd");

  Press(second, {"ctrl+c"});
  DismissMessage();
  EXPECT_EQ(Clipboard(), "二つ目.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397");
  Press(a, {"ctrl+alt+c"});
  DismissMessage();
  EXPECT_EQ(Clipboard(),
            "a.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397\n"
            "二つ目.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397\n"
            "later.indd\tVer.15 CC2019より新しい\t\tサブバージョン不明\n");
  Press(a, {"ctrl+w"});
  ASSERT_TRUE(HasWindows({"later.indd", "二つ目.indd"}));
  Press(second, {"ctrl+alt+w"});
  ASSERT_TRUE(HasWindows({"Vintrace"}));

  const WId standIn = WindowNamed("Vintrace");
  Click(standIn, {20, 10});
  QStringList windows;
  ASSERT_TRUE(Comes([&] {
    windows = OutputOf("xdotool", {"search", "--onlyvisible", "--class", "^vintrace$"}).split('\n');
    return windows.removeOne(QString::number(standIn)) && windows.front().toULongLong() != 0;
  }));
  const WId menu = windows.front().toULongLong();
  const QRect area = Screenshot(menu).rect();
  Click(menu, {area.center().x(), area.bottom() - 10});
  AwaitEnd();
}

TEST_F(CommandsOnDesktop, KeysOpenTheAboutWindowAClickClosesItAndAKeyQuitsFromIt) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  const WId about = OpenAboutWindow(standIn);
  ASSERT_NE(about, 0U);
  EXPECT_EQ(Screenshot(about).size(), QSize(460, 300));
  Click(about, {100, 280});
  ASSERT_TRUE(HasWindows({"Vintrace"}));
  Press(OpenAboutWindow(standIn), {"ctrl+q"});
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
