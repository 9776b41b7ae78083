#include "launch/OpenApp.h"

#include "platform/Exceptions.h"
#include "platform/OpenDialog.h"
#include "platform/Shell.h"
#include "platform/SpecialFolder.h"

namespace vintrace::launch {

std::optional<FolderItem> AskForApplication(const String& product) {
  OpenDialog dialog;
  dialog.InitialDirectory = SpecialFolder::Applications();
  dialog.Title = product + "を選択して下さい。";
  return dialog.ShowModal();
}

bool OpenApp(const String& location, const std::optional<FolderItem>& document) {
  const auto application = GetFolderItem(location, PathMode::Shell);
  if (!application || !application->Exists()) return false;
  if (!document) throw NilObjectException("the document");
  Shell shell;
  shell.Execute("open -a " + application->ShellPath() + ' ' + document->ShellPath());
  return shell.ErrorCode() == 0;
}

}  // namespace vintrace::launch
