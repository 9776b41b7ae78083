#pragma once

#include <optional>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace {

/// A dialog of the system's that asks for an item.
class FolderItemDialog {
 public:
  FolderItemDialog() = default;
  FolderItemDialog(const FolderItemDialog&) = delete;
  FolderItemDialog& operator=(const FolderItemDialog&) = delete;
  virtual ~FolderItemDialog() = default;

  /// The folder in which it opens; nil or not there: where the system begins.
  std::optional<FolderItem> InitialDirectory;
  /// UTF-8; empty: the system's own title.
  String Title;

  /// Shows the dialog, and returns the chosen item, or nil on cancel.
  virtual std::optional<FolderItem> ShowModal() = 0;
};

/// Asks for one existing item: a file of any kind, or an application bundle.
class OpenDialog : public FolderItemDialog {
 public:
  std::optional<FolderItem> ShowModal() override;
};

}  // namespace vintrace
