#pragma once

#include <QDialog>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class QTreeView;

namespace vintrace {
struct FileRequest;
}

namespace vintrace::qt {

class DirectoryModel;
struct DirectoryItem;

/// The dialog that asks for one file, or without a filter for a file or an application bundle,
/// which is a folder. Unlike the toolkit's own it takes names as bytes, so that one that is no
/// valid UTF-8 is seen and chosen like any other. It opens nothing and never touches what is no
/// regular file or folder. It begins in the folder of the request, and without one in that of the
/// last such choice in this process; where that isn't there, in the user's home.
class OpenFileDialog : public QDialog {
 public:
  explicit OpenFileDialog(const FileRequest& request, QWidget* parent = nullptr);

  /// The folder that is shown, absolute.
  const std::filesystem::path& Folder() const { return folder_; }
  /// Nothing until the dialog is accepted.
  const std::optional<std::string>& ChosenPath() const { return chosenPath_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SetUpPlaces();
  void SetUpList();
  void SetUpFilter(const FileRequest& request);
  void SetUpLines();
  void LayOut();
  QWidget* MakeButtons();
  void ConnectNavigation();
  void ConnectChoice();

  void Begin(const FileRequest& request);
  /// Shows `folder`, which is absolute, or says why not and stays.
  bool Enter(const std::filesystem::path& folder);
  void GoUp();
  void Refilter();
  void Select(const std::string& name);
  const DirectoryItem* SelectedItem() const;

  void Confirm();
  void Choose(const std::filesystem::path& path);
  /// True for a folder that is to be chosen as one item.
  bool IsBundle(const std::filesystem::path& folder) const;
  void Accept(const std::filesystem::path& item);

  void ShowFolder();
  void ShowSelection();
  void ShowCount();
  /// Puts `text`, with the name of `path` for %1, into the status line, and after it the system's
  /// words for `error`, if any.
  void Complain(const QString& text, const std::filesystem::path& path, std::error_code error = {});

  bool anyItem_;
  bool remembersFolder_;
  std::filesystem::path folder_ = "/";
  std::vector<std::string> suffixes_;
  std::optional<std::string> chosenPath_;
  DirectoryModel* model_;
  QComboBox* places_;
  QLineEdit* path_;
  QToolButton* up_;
  QTreeView* list_;
  QLabel* status_;
  // Either an item is selected and this line shows it, or the line holds what the user has typed.
  QLineEdit* name_;
  QComboBox* filter_;
  QCheckBox* hidden_;
  QPushButton* open_;
};

}  // namespace vintrace::qt
