#pragma once

#include <optional>

#include "platform/FolderItem.h"

/// Folders that every system has in a place of its own.
namespace vintrace::SpecialFolder {

/// The user's folder for the data of applications, which is made if the account has none yet, for
/// the user alone (mode 0700): $XDG_DATA_HOME if that is an absolute path, else .local/share in the
/// home folder; on macOS Library/Application Support there. Nil when there is no home folder, or it
/// can't be made.
std::optional<FolderItem> ApplicationData();

/// The folder of installed applications: /Applications on macOS; elsewhere the user's Windows
/// programs under Wine if there are any, else /usr/share/applications.
FolderItem Applications();

}  // namespace vintrace::SpecialFolder
