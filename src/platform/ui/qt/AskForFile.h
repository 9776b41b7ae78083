#pragma once

#include <optional>

#include "platform/files/FolderItem.h"

class QWidget;

namespace vintrace {
struct FileRequest;
}

namespace vintrace::qt {

/// Asks the user for one existing file, in the desktop's dialog in front of `parent`, which may be
/// null. Runs an event loop until the user answers. Nil on cancel, and if `parent` is destroyed
/// meanwhile.
std::optional<FolderItem> AskForFile(const FileRequest& request, QWidget* parent);

}  // namespace vintrace::qt
