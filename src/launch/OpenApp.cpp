#include "launch/OpenApp.h"

#include "platform/process/Shell.h"
#include "platform/text/Exceptions.h"

namespace vintrace::launch {

bool OpenApp(const String& location, const std::optional<FolderItem>& document) {
  const auto application = GetFolderItem(location, PathMode::Shell);
  if (!application || !application->Exists()) return false;
  if (!document) throw NilObjectException("the document");
  Shell shell;
  shell.Mode = 0;
  shell.Execute("open -a " + application->ShellPath() + ' ' + document->ShellPath());
  return shell.ErrorCode() == 0;
}

}  // namespace vintrace::launch
