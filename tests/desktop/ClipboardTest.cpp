// What was copied, after the program has ended.

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

class ClipboardTest : public ProgramOnDesktop {
 protected:
  void SetUp() override {
    manager_.start(CLIPBOARD_MANAGER, {});
    ASSERT_TRUE(manager_.waitForReadyRead(Patience));
    ASSERT_EQ(manager_.readLine().toStdString(), "ready\n");
  }

  void TearDown() override {
    ProgramOnDesktop::TearDown();
    manager_.terminate();
    manager_.waitForFinished(Patience);
  }

  /// The clipboard after the program has copied all and ended that way.
  std::string CopiedBefore(const std::function<void(WId)>& end) {
    StartWith({PathOfDocument("a.indd"), PathOfDocument("二つ目.indd")});
    EXPECT_TRUE(HasWindows({"a.indd", "二つ目.indd"}));
    const WId window = WindowNamed("a.indd");
    Press(window, {"ctrl+alt+c"});
    DismissMessage();
    end(window);
    AwaitEnd();
    return Clipboard();
  }

 private:
  QProcess manager_;
};

constexpr std::string_view Rows =
    "a.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397\n"
    "二つ目.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397\n";

TEST_F(ClipboardTest, WhatWasCopiedOutlivesTheProgramThatTheUserQuits) {
  EXPECT_EQ(CopiedBefore([](WId window) { Press(window, {"ctrl+q"}); }), Rows);
}

TEST_F(ClipboardTest, WhatWasCopiedOutlivesTheProgramThatASignalEnds) {
  EXPECT_EQ(CopiedBefore([this](WId /*window*/) { program.terminate(); }), Rows);
}

}  // namespace
}  // namespace vintrace::test
