#pragma once

#include "platform/files/FolderItem.h"

namespace vintrace::open {

/// Starts `application` with `document`, both absolute paths, in a session of its own and with none
/// of this process's open files, and returns when it runs. The ending of its name decides how:
/// - NAME.desktop: a desktop entry, by the desktop's own launcher, gio;
/// - NAME.exe: a Windows program, by Wine, in the prefix in which it is installed, with the
///   document's Windows path;
/// - otherwise: an executable file.
/// Raises `RuntimeException`, with the item's path and the reason, if something is missing or can't
/// be started; nothing runs then.
void Launch(const FolderItem& application, const FolderItem& document);

}  // namespace vintrace::open
