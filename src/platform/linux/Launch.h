#pragma once

#include "platform/FolderItem.h"

namespace vintrace::open {

/// Starts `application` with `document`, both absolute, and returns when it runs, in a session of
/// its own and with nothing of this process's but its environment. What kind of application it is,
/// its name and place tell:
/// - NAME.desktop: a desktop entry, which the desktop's own launcher starts;
/// - NAME.exe: a Windows program, which Wine starts, in the prefix that it is installed in, with
/// the
///   document's path as Windows has it;
/// - NAME.app, a folder: a bundle, whose executable is started;
/// - any other executable file.
/// Raises `RuntimeException`, with the item and the reason in one line, when something is missing
/// or can't be started; nothing runs then.
void Launch(const FolderItem& application, const FolderItem& document);

}  // namespace vintrace::open
