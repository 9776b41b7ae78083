#include "platform/qt/AskForFile.h"

#include <QPointer>

#include "platform/FileRequest.h"
#include "platform/qt/OpenFileDialog.h"

namespace vintrace::qt {

std::optional<FolderItem> AskForFile(const FileRequest& request, QWidget* parent) {
  const QPointer<OpenFileDialog> dialog = new OpenFileDialog(request, parent);
  dialog->exec();
  if (dialog.isNull()) return std::nullopt;
  const auto path = dialog->ChosenPath();
  delete dialog;
  return path ? std::optional(FolderItem(*path)) : std::nullopt;
}

}  // namespace vintrace::qt
