#include "platform/ui/OpenDialog.h"

#include "platform/ui/Host.h"

namespace vintrace {

std::optional<FolderItem> OpenDialog::ShowModal() {
  return Host::Current().AskForFile(
      {.title = Title, .initialDirectory = InitialDirectory, .filter = std::nullopt});
}

}  // namespace vintrace
