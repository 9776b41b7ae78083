#pragma once

#include <string_view>

#include "inspection/InspectionReport.h"
#include "platform/files/FolderItem.h"

namespace vintrace::inspection {

/// True when `name`, the leaf name of a file, ends as a document's name does: ".indd" in any case.
bool IsDocumentName(std::string_view name);

/// Inspects the document `item`, whatever its name, and writes what it finds into `report`, a new
/// one: first its name and the item, then the release, the build and the edition. Any bytes are a
/// legal document. Raises `IOException` when the file can't be opened or read; `report` then holds
/// what had been found before.
void VersionCheck(const FolderItem& item, InspectionReport& report);

}  // namespace vintrace::inspection
