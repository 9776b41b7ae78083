#include "platform/ui/qt/AskForFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QLibraryInfo>
#include <QPointer>
#include <QStringList>
#include <QTranslator>
#include <QUrl>

#include "platform/ui/OpenDialog.h"
#include "platform/ui/qt/FileAddress.h"
#include "platform/ui/qt/widgets/DisplayText.h"

namespace vintrace::qt {
namespace {

/// Such as "indd (*.indd *.INDD)", because some desktops match case-sensitively.
QString FilterOf(const FileType& type) {
  QStringList patterns;
  for (const auto& suffix : type.Suffixes()) {
    const QString pattern = '*' + DisplayText(suffix);
    patterns << pattern << pattern.toUpper();
  }
  return DisplayText(type.Name) + " (" + patterns.join(' ') + ')';
}

/// The folder of the last choice, for dialogs without an initial folder. Qt's own memory would also
/// change after a dialog that had one.
QUrl& LastFolder() {
  static QUrl folder = QUrl::fromLocalFile(QDir::homePath());
  return folder;
}

/// For Qt's own dialog, which is shown if the desktop has none. Its texts are in English
/// unless the Japanese ones are installed and loaded.
void LoadJapaneseTexts() {
  static QPointer<QTranslator> translator;
  if (translator) return;
  translator = new QTranslator(QCoreApplication::instance());
  const auto folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (translator->load("qtbase_ja", folder)) QCoreApplication::installTranslator(translator);
}

}  // namespace

std::optional<FolderItem> AskForFile(const FileRequest& request, QWidget* parent) {
  LoadJapaneseTexts();
  const QPointer<QFileDialog> dialog = new QFileDialog(parent);
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->setSupportedSchemes({QStringLiteral("file")});
  if (!request.title.empty()) dialog->setWindowTitle(DisplayText(request.title));
  dialog->setDirectoryUrl(request.initialDirectory
                              ? QUrl::fromEncoded(AddressOf(*request.initialDirectory))
                              : LastFolder());
  if (request.filter) {
    dialog->setNameFilters({FilterOf(*request.filter), QStringLiteral("すべてのファイル (*)")});
  }
  const bool accepted = dialog->exec() == QDialog::Accepted;
  const QList<QUrl> chosen = dialog && accepted ? dialog->selectedUrls() : QList<QUrl>();
  delete dialog;
  if (chosen.isEmpty()) return std::nullopt;
  if (!request.initialDirectory) LastFolder() = chosen.front().adjusted(QUrl::RemoveFilename);
  return FileAt(chosen.front().toEncoded());
}

}  // namespace vintrace::qt
