// Files dragged to the program from another process, which is the test.

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

using DropTest = ProgramOnDesktop;

TEST_F(DropTest, OnlyTheStandInWindowOpensDroppedFiles) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  const WId about = OpenAboutWindow(standIn);
  ASSERT_NE(about, 0U);
  EXPECT_FALSE(IsTakenBy(about, AddressOf("refused.indd")));
  Click(about, {100, 280});
  ASSERT_TRUE(HasWindows({"Vintrace"}));

  EXPECT_FALSE(IsTakenBy(standIn, AddressOf("refused.indd"), "text/plain"));
  EXPECT_FALSE(IsTakenBy(standIn, "http://vt.example/a.indd\r\n"));
  EXPECT_TRUE(IsTakenBy(standIn, AddressOf("a b.indd") + AddressOf("\xFF.indd")));
  ASSERT_TRUE(HasWindows({"a b.indd", "\uFFFD.indd"}));
  const WId window = WindowNamed("a b.indd");
  OutputOf("xdotool", {"windowactivate", "--sync", QString::number(window)});
  EXPECT_FALSE(IsTakenBy(window, AddressOf("refused.indd")));
  Press(window, {"ctrl+w"});
  ASSERT_TRUE(HasWindows({"\uFFFD.indd"}));
  Press(WindowNamed("\uFFFD.indd"), {"ctrl+w"});
  Press(WindowNamed("Vintrace"), {"alt+F4"});
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
