#include "platform/Window.h"

#include <gtest/gtest.h>

#include "platform/Desktop.h"
#include "platform/Exceptions.h"
#include "support/ScriptedHost.h"

namespace vintrace::test {
namespace {

class OneButton : public Window {
 public:
  PushButton& Button() const { return ControlAt<PushButton>(0); }

 protected:
  void Layout() override {}
  void CreateControls() override { Add<PushButton>({"Button", {0, 0, 10, 10}, 0, "", 0}); }
};

TEST(Window, ClosedByItsOwnHandlerItLivesUntilThatEndsAndRaisesNoFurtherEvent) {
  ScriptedHost host;
  std::weak_ptr<OneButton> window = Window::New<OneButton>();
  PushButton& button = window.lock()->Button();
  int presses = 0;
  button.Action = [&] {
    if (++presses > 1) return;
    desktop::Window(0)->Close();
    ASSERT_FALSE(window.expired());
    button.RaiseAction();
    throw IOException(28, "No space left\non device");
  };
  button.RaiseAction();
  EXPECT_EQ(presses, 1);
  EXPECT_TRUE(window.expired());
  EXPECT_EQ(host.story.back(),
            "message: 予期しないエラーが起こりました。\nNo space left\uFFFDon device");
}

}  // namespace
}  // namespace vintrace::test
