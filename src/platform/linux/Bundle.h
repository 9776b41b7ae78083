#pragma once

#include "platform/FolderItem.h"

namespace vintrace::open {

/// The executable of an application bundle, a folder NAME.app: in Contents/MacOS, with the name
/// that the key CFBundleExecutable of Contents/Info.plist gives, or else NAME. A property list that
/// can't be read, or that gives no leaf name, gives none. Nothing needs to lie there.
FolderItem ExecutableOfBundle(const FolderItem& bundle);

}  // namespace vintrace::open
