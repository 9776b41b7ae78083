#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/ui/Host.h"
#include "support/ScriptedNetwork.h"

namespace vintrace::test {

/// A desktop without a screen: answers dialogs from a list and records the program's requests.
class ScriptedHost : public Host {
 public:
  /// The documents that the program is started with, in order; nil makes it ask for one.
  std::vector<std::optional<FolderItem>> handedOver;

  /// The user's answers to the dialogs, in order. Further dialogs are cancelled.
  std::deque<FolderItem> choices;

  /// Refuses connections unless a test adds peers.
  ScriptedNetwork network;

  String clipboard = "earlier text";

  /// The program's requests, a line each: "window" for a shown window, "message: TEXT", "open
  /// dialog: TITLE FILTER (EXTENSIONS)" without the parts that are not set, "yield focus", "quit:
  /// STATUS".
  std::vector<std::string> story;

  void Show(Window& window) override;
  void Changed(Window&) override {}
  void Changed(RectControl&) override {}
  void Closed(Window&) override {}
  void ShowMessage(const String& text) override { story.push_back("message: " + text); }
  std::optional<FolderItem> AskForFile(const FileRequest& request) override;
  void SetClipboardText(const String& text) override { clipboard = text; }
  void ShowURL(const String&) override {}
  void YieldFocus() override { story.emplace_back("yield focus"); }
  vintrace::Network& Network() override { return network; }
  void Run() override;
  void Quit(int exitStatus) override;

  /// Chooses the menu item of that name. False if it is disabled.
  bool Choose(std::string_view itemName);

  /// The titles of the open windows, front to back.
  std::vector<std::string> Titles();

 private:
  bool quitting_ = false;
};

}  // namespace vintrace::test
