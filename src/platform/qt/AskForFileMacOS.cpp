// macOS has a dialog of its own, and only names that are valid UTF-8.

#include <QFile>
#include <QFileDialog>

#include "platform/FileRequest.h"
#include "platform/qt/AskForFile.h"
#include "platform/qt/DisplayText.h"
#include "platform/qt/FilterLabel.h"

namespace vintrace::qt {

std::optional<FolderItem> AskForFile(const FileRequest& request, QWidget* parent) {
  const QString folder =
      request.initialDirectory
          ? QFile::decodeName(QByteArray::fromStdString(request.initialDirectory->NativePath()))
          : QString();
  const QString file =
      QFileDialog::getOpenFileName(parent, DisplayText(request.title), folder,
                                   request.filter ? FilterLabel(*request.filter) : QString());
  if (file.isEmpty()) return std::nullopt;
  return FolderItem(QFile::encodeName(file).toStdString());
}

}  // namespace vintrace::qt
