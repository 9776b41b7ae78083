#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/ui/Host.h"
#include "support/ScriptedNetwork.h"

namespace vintrace::test {

/// A desktop without a screen: dialogs are answered from a list, and what was asked is recorded.
class ScriptedHost : public Host {
 public:
  /// What happens to the program as it starts, in order.
  std::vector<std::optional<FolderItem>> handedOver;

  /// The user's answers to the dialogs; with none left, a dialog is cancelled.
  std::deque<FolderItem> choices;

  /// What the program's requests meet; it refuses them unless told otherwise.
  ScriptedNetwork network;

  /// What the clipboard holds.
  String clipboard = "what it held before";

  /// What the program asked for, one line a thing: "window", which is shown, "message: …", "open
  /// dialog: indd (.indd)", with a title "open dialog: TITLE", "quit: 0".
  std::vector<std::string> story;

  void Show(Window& window) override;
  void Changed(Window&) override {}
  void Changed(RectControl&) override {}
  void Closed(Window&) override {}
  void ShowMessage(const String& text) override { story.push_back("message: " + text); }
  std::optional<FolderItem> AskForFile(const FileRequest& request) override;
  void SetClipboardText(const String& text) override { clipboard = text; }
  void ShowURL(const String&) override {}
  vintrace::Network& Network() override { return network; }
  void Run() override;
  void Quit(int exitStatus) override;

  /// The user chooses the menu item of that name. False when it can't be chosen now.
  bool Choose(std::string_view itemName);

  /// The titles of the open windows, front to back.
  std::vector<std::string> Titles();

 private:
  bool quitting_ = false;
};

}  // namespace vintrace::test
