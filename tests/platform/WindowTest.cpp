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

std::shared_ptr<OneButton> Titled(const String& title) {
  auto window = Window::New<OneButton>();
  window->SetTitle(title);
  return window;
}

using Titles = std::vector<std::string>;

TEST(Window, TheLastActivatedIsFirstAndTheOthersKeepTheirOrder) {
  ScriptedHost host;
  const auto a = Titled("a");
  const auto b = Titled("b");
  const auto c = Titled("c");
  EXPECT_EQ(host.Titles(), (Titles{"c", "b", "a"}));
  host.Windows().BringToFront(a);
  EXPECT_EQ(host.Titles(), (Titles{"a", "c", "b"}));
  c->Close();
  c->Close();
  EXPECT_EQ(host.Titles(), (Titles{"a", "b"}));
  EXPECT_EQ(desktop::Window(2), nullptr);
  EXPECT_EQ(desktop::Window(-1), nullptr);
}

TEST(Window, ClosedByItsOwnHandlerItLivesUntilTheHandlerReturns) {
  ScriptedHost host;
  std::weak_ptr<OneButton> window = Titled("a");
  bool aliveAtTheEnd = false;
  window.lock()->Button().Action = [&] {
    desktop::Window(0)->Close();
    aliveAtTheEnd = !window.expired();
  };
  window.lock()->Button().RaiseAction();
  EXPECT_TRUE(aliveAtTheEnd);
  EXPECT_TRUE(window.expired());
}

class ClosesItself : public OneButton {
 protected:
  void Event_Open() override { Close(); }
};

TEST(Window, OneThatClosesItselfAsItOpensIsNeverShown) {
  ScriptedHost host;
  const auto window = Window::New<ClosesItself>();
  EXPECT_FALSE(window->IsOpen());
  EXPECT_EQ(host.story, Titles{});
  EXPECT_EQ(host.Titles(), Titles{});
}

class FailsToOpen : public OneButton {
 protected:
  void Event_Open() override { throw RuntimeException("broken"); }
};

TEST(Window, OneThatFailsAsItOpensIsNotLeftInTheList) {
  ScriptedHost host;
  EXPECT_THROW(Window::New<FailsToOpen>(), RuntimeException);
  EXPECT_EQ(host.Titles(), Titles{});
}

TEST(Window, AClosedOneRaisesNoEvents) {
  ScriptedHost host;
  const auto window = Titled("a");
  int presses = 0;
  window->Button().Action = [&] { ++presses; };
  window->Button().RaiseAction();
  window->Close();
  window->Button().RaiseAction();
  EXPECT_EQ(presses, 1);
}

TEST(Window, WhatAHandlerThrowsIsReportedAndTheProgramGoesOn) {
  ScriptedHost host;
  const auto window = Titled("a");
  window->Button().Action = [] { throw IOException(28, "No space left\non device"); };
  window->Button().RaiseAction();
  EXPECT_EQ(host.story.back(),
            "message: 予期しないエラーが起こりました。\nNo space left\uFFFDon device");
  EXPECT_TRUE(window->IsOpen());
}

}  // namespace
}  // namespace vintrace::test
