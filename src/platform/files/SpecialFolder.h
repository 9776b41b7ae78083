#pragma once

#include <optional>

#include "platform/files/FolderItem.h"

/// Folders whose paths depend on the system.
namespace vintrace::SpecialFolder {

/// The user's folder for application data: $XDG_DATA_HOME if that is an absolute path, otherwise
/// .local/share in the home folder; on macOS Library/Application Support in the home folder. It is
/// created with mode 0700 if it doesn't exist. Nil if there is no home folder, or the folder can't
/// be created.
std::optional<FolderItem> ApplicationData();

/// The folder of installed applications: /Applications on macOS; elsewhere the Windows programs of
/// the user's Wine prefix if it has any, otherwise /usr/share/applications.
FolderItem Applications();

}  // namespace vintrace::SpecialFolder
