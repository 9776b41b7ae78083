#pragma once

#include <optional>
#include <string_view>

#include "platform/files/FolderItem.h"

namespace vintrace::posix {

/// The folder that the environment variable `variable` names; nil if that is no absolute path.
std::optional<FolderItem> FolderOf(const char* variable);

/// The item at `path` in the user's home folder; nil for a user without one.
std::optional<FolderItem> InHome(std::string_view path);

/// The prefix that Wine uses by default. It may not exist.
std::optional<FolderItem> DefaultWinePrefix();

}  // namespace vintrace::posix
