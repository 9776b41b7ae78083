// What was copied, after the program has ended.

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

using ClipboardOnDesktop = ProgramOnDesktop;

TEST_F(ClipboardOnDesktop, WhatWasCopiedOutlivesTheProgramThatTheUserOrASignalEnds) {
  QProcess manager;
  manager.start(CLIPBOARD_MANAGER, {});
  ASSERT_TRUE(manager.waitForReadyRead(Patience));
  ASSERT_EQ(manager.readLine().toStdString(), "ready\n");
  for (const auto& [name, byKey] : {std::pair{"a.indd", true}, {"二つ目.indd", false}}) {
    StartWith({PathOfDocument(name)});
    const WId window = WindowNamed(name);
    Press(window, {"ctrl+alt+c"});
    DismissMessage();
    if (byKey) {
      Press(window, {"ctrl+q"});
    } else {
      program.terminate();
    }
    AwaitEnd();
    EXPECT_EQ(Clipboard(),
              std::string(name) + "\tAdobe InDesign CS6\tWindows Edition\t8.0.0.397\n");
  }
  manager.terminate();
  EXPECT_TRUE(manager.waitForFinished(Patience));
}

}  // namespace
}  // namespace vintrace::test
