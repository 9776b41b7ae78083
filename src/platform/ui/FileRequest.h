#pragma once

#include <optional>

#include "platform/files/FileType.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace {

/// What the user is asked for by a dialog that chooses one existing item.
struct FileRequest {
  String title;                                ///< UTF-8; empty: the platform's own title.
  std::optional<FolderItem> initialDirectory;  ///< Nil or not there: where the platform begins.
  std::optional<FileType> filter;              ///< Nil: any item.
};

}  // namespace vintrace
