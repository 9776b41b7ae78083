#pragma once

#include <string_view>

#include "inspection/InspectionReport.h"
#include "platform/files/FolderItem.h"

namespace vintrace::inspection {

/// True if `name`, the leaf name of a file, ends with ".indd" in any case.
bool IsDocumentName(std::string_view name);

/// Whether a file without the signature of InDesign documents is inspected.
enum class Signature { Ignored, Required };

/// Inspects the document `item`, whatever its name, and writes the results into `report`: its name
/// and the item, then the release, the build and the edition. Raises `IOException` if the file
/// can't be read, and `RuntimeException` if it lacks a required signature; `report` keeps what was
/// written before.
void VersionCheck(const FolderItem& item, InspectionReport& report,
                  Signature signature = Signature::Ignored);

}  // namespace vintrace::inspection
