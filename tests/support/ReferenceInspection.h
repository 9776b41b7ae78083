#pragma once

#include <optional>
#include <string_view>

#include "support/ReportFields.h"

namespace vintrace::test {

/// The report of a document that is held whole in memory; nothing when `name`, the leaf name of the
/// file, is no document's. This shares no code with the program's own inspection, so that a
/// difference between the two is an error in one of them. Both arguments may hold any bytes.
std::optional<ReportFields> InspectByReference(std::string_view name, std::string_view content);

}  // namespace vintrace::test
