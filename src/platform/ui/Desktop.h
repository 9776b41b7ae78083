#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace {
class Window;
}

/// What a program asks of its desktop, as functions. Contracts: those of `Host` and `WindowList`.
namespace vintrace::desktop {

/// The number of open windows.
int WindowCount();
/// The window at the 0-based place `index` from the front; nil if there is none.
std::shared_ptr<vintrace::Window> Window(int index);

void MsgBox(const String& text);
/// Lets the user choose one file of the registered type `filterName`; nil on cancel. A name that is
/// not registered filters nothing.
std::optional<FolderItem> GetOpenFolderItem(std::string_view filterName);
void ShowURL(const String& url);
void Quit(int exitStatus);

}  // namespace vintrace::desktop
