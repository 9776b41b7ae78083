#include "platform/ui/Desktop.h"

#include "platform/ui/Host.h"

namespace vintrace::desktop {

int WindowCount() { return Host::Current().Windows().Count(); }

std::shared_ptr<vintrace::Window> Window(int index) { return Host::Current().Windows().At(index); }

void MsgBox(const String& text) { Host::Current().ShowMessage(text); }

std::optional<FolderItem> GetOpenFolderItem(std::string_view filterName) {
  return Host::Current().AskForFile(
      {.title = {}, .initialDirectory = {}, .filter = FileType::Registered(filterName)});
}

void ShowURL(const String& url) { Host::Current().ShowURL(url); }

void YieldFocus() { Host::Current().YieldFocus(); }

void Quit(int exitStatus) { Host::Current().Quit(exitStatus); }

}  // namespace vintrace::desktop
