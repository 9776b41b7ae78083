#pragma once

#include "commands/inspect/Options.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::inspect {

/// The line of the document `item` that `options` ask for, with its line feed. Raises
/// `RuntimeException` if the file is no document or can't be read.
String RowOf(const FolderItem& item, const Options& options);

/// The line of the columns' names.
String HeaderRow(const Options& options);

}  // namespace vintrace::inspect
