#pragma once

#include "platform/FolderItem.h"

namespace vintrace::open {

/// Starts `application` with `document`, both absolute, and returns when it runs, in a session of
/// its own and with none of this process's open files. What it is, its name tells:
/// - NAME.desktop: a desktop entry, which the desktop's own launcher, gio, starts;
/// - NAME.exe: a Windows program, which Wine starts, in the prefix that it is installed in, with
///   the document's path as Windows has it;
/// - NAME.app, a folder: a bundle, whose executable is started;
/// - anything else: an executable file.
/// Raises `RuntimeException`, with the item and the reason in one line, when something is missing
/// or can't be started; nothing runs then.
void Launch(const FolderItem& application, const FolderItem& document);

}  // namespace vintrace::open
