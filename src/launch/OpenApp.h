#pragma once

#include <optional>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::launch {

/// Opens `document` in the application at `location`, a path in shell form, by the system's `open`
/// command, and waits for that command. False if nothing exists at the location or the command
/// fails. Raises `NilObjectException` for a nil document, and like `Shell::Execute`.
bool OpenApp(const String& location, const std::optional<FolderItem>& document);

}  // namespace vintrace::launch
