#pragma once

#include <optional>

#include "platform/FolderItem.h"
#include "platform/String.h"

namespace vintrace::launch {

/// Asks the user for the application of `product`, as its release is called. Nil on cancel. What is
/// chosen isn't checked: it need be no application.
std::optional<FolderItem> AskForApplication(const String& product);

/// Opens `document` in the application at `location`, a path in shell form, with the system's
/// `open` command, and returns when that has ended. True when it could; false when no application
/// lies there, or the command failed for whatever reason. Raises `NilObjectException` for a nil
/// document, and what `Shell` raises when there is no shell or no command.
bool OpenApp(const String& location, const std::optional<FolderItem>& document);

}  // namespace vintrace::launch
