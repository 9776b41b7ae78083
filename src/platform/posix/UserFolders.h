#pragma once

#include <optional>
#include <string_view>

#include "platform/FolderItem.h"

namespace vintrace::posix {

/// The folder that the environment variable `variable` names; nil when it names no absolute path.
std::optional<FolderItem> FolderOf(const char* variable);

/// The item at `path` in the user's home folder; nil for a user without one.
std::optional<FolderItem> InHome(std::string_view path);

/// The folder of drives and settings that Wine takes when it is told of none. It need not be there.
std::optional<FolderItem> UsualWinePrefix();

}  // namespace vintrace::posix
