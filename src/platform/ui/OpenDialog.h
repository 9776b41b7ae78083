#pragma once

#include <optional>

#include "platform/files/FileType.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace {

/// The parameters of a dialog that asks for one existing file.
struct FileRequest {
  String title;                                ///< UTF-8; if empty, the desktop's own title.
  std::optional<FolderItem> initialDirectory;  ///< If nil, the last choice's folder.
  std::optional<FileType> filter;              ///< If nil, any file.
};

/// A dialog of the desktop that asks for a file or folder.
class FolderItemDialog {
 public:
  FolderItemDialog() = default;
  FolderItemDialog(const FolderItemDialog&) = delete;
  FolderItemDialog& operator=(const FolderItemDialog&) = delete;
  virtual ~FolderItemDialog() = default;

  /// See `FileRequest`.
  std::optional<FolderItem> InitialDirectory;
  String Title;

  /// Shows the dialog and returns the chosen item, or nil on cancel.
  virtual std::optional<FolderItem> ShowModal() = 0;
};

/// Asks for one existing file of any kind.
class OpenDialog : public FolderItemDialog {
 public:
  std::optional<FolderItem> ShowModal() override;
};

}  // namespace vintrace
