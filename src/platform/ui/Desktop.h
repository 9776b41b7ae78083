#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace {
class Window;
}

/// The services of the current `Host`, as functions with the contracts of `Host` and `WindowList`.
namespace vintrace::desktop {

/// The number of open windows.
int WindowCount();
/// The window at the 0-based position `index` from the front; nil if there is none.
std::shared_ptr<vintrace::Window> Window(int index);

void MsgBox(const String& text);
/// Asks the user for one file; nil on cancel. Shows files of the registered type `filterName`
/// first, or all files if it isn't registered. The user can always switch to all files.
std::optional<FolderItem> GetOpenFolderItem(std::string_view filterName);
void ShowURL(const String& url);
void YieldFocus();
void Quit(int exitStatus);

}  // namespace vintrace::desktop
