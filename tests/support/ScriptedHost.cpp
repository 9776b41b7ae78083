#include "support/ScriptedHost.h"

#include "platform/ui/Menu.h"
#include "platform/ui/Window.h"

namespace vintrace::test {

void ScriptedHost::Show(Window&) { story.emplace_back("window"); }

std::optional<FolderItem> ScriptedHost::AskForFile(const FileRequest& request) {
  std::string line = "open dialog:";
  if (!request.title.empty()) line += ' ' + request.title;
  if (request.filter) line += ' ' + request.filter->Name + " (" + request.filter->Extensions + ')';
  story.push_back(line);
  if (choices.empty()) return std::nullopt;
  const FolderItem choice = choices.front();
  choices.pop_front();
  return choice;
}

void ScriptedHost::Run() {
  for (const auto& item : handedOver) {
    if (!quitting_) Application().RaiseOpenDocument(item);
  }
  if (!quitting_) Application().RaiseOpen();
}

void ScriptedHost::Quit(int exitStatus) {
  quitting_ = true;
  story.push_back("quit: " + std::to_string(exitStatus));
}

bool ScriptedHost::Choose(std::string_view itemName) {
  const MenuItem& item = Application().MenuBar()->Item(itemName);
  ChooseMenuItem(item);
  return item.Enabled();
}

std::vector<std::string> ScriptedHost::Titles() {
  std::vector<std::string> titles;
  for (int i = 0; const auto window = Windows().At(i); ++i) titles.push_back(window->Title());
  return titles;
}

}  // namespace vintrace::test
