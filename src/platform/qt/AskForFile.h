#pragma once

#include <optional>

#include "platform/FolderItem.h"

class QWidget;

namespace vintrace {
struct FileRequest;
}

namespace vintrace::qt {

/// The existing item that the user chooses in a dialog in front of `parent`, which may be null, or
/// nil on cancel. Runs a loop of its own until then. If `parent` is destroyed meanwhile, that is a
/// cancel.
std::optional<FolderItem> AskForFile(const FileRequest& request, QWidget* parent);

}  // namespace vintrace::qt
