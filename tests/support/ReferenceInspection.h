#pragma once

#include <string_view>

#include "support/ReportFields.h"

namespace vintrace::test {

/// Inspects a document, whose content may be any bytes. Shares no code with the program's own
/// inspection, so a difference between the two is an error in one of them.
ReportFields InspectByReference(std::string_view content);

}  // namespace vintrace::test
