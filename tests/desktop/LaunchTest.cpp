// The button that opens a document in its release, by the user's own mouse and keyboard.

#include "desktop/DesktopFixture.h"
#include "support/RecordingApplication.h"

namespace vintrace::test {
namespace {

class LaunchOnDesktop : public ProgramOnDesktop {
 protected:
  /// Presses the button of the document's window.
  static void PressOpen(const QString& title) {
    const WId window = WindowNamed(title);
    ASSERT_NE(window, 0U);
    Click(window, Place(window, {90, 121}));
  }
};

TEST_F(LaunchOnDesktop, TheApplicationIsAskedForOnceAndAgainWhenItHasGone) {
  const QString question = "Adobe InDesign CS6を選択して下さい。";
  const RecordingApplication application(
      folder.Item("prefix/drive_c/Program Files/Adobe InDesign CS6/app"));
  StartWith({PathOfDocument("a '.indd"), PathOfDocument("b.indd"), PathOfDocument("c.indd")});
  PressOpen("a '.indd");
  const WId dialog = WindowNamed(question);
  ASSERT_NE(dialog, 0U);
  Press(dialog, {"Down", "Return", "Down", "Return"});
  EXPECT_EQ(application.AwaitStart(), Lines{folder.Item("a '.indd").NativePath()});
  ASSERT_TRUE(HasWindows({"b.indd", "c.indd"}));

  PressOpen("b.indd");
  EXPECT_EQ(application.AwaitStart(), Lines{folder.Item("b.indd").NativePath()});
  ASSERT_TRUE(HasWindows({"c.indd"}));

  std::filesystem::remove(application.Item().NativePath());
  PressOpen("c.indd");
  const WId again = WindowNamed(question);
  ASSERT_NE(again, 0U);
  Press(again, {"Escape"});
  DismissMessage();
  EXPECT_TRUE(HasWindows({"c.indd"}));
}

}  // namespace
}  // namespace vintrace::test
