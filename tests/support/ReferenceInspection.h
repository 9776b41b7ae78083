#pragma once

#include <string_view>

#include "support/ReportFields.h"

namespace vintrace::test {

/// The report of a document that is held whole in memory; it may hold any bytes. This shares no
/// code with the program's own inspection, so that a difference between the two is an error in one
/// of them.
ReportFields InspectByReference(std::string_view content);

}  // namespace vintrace::test
