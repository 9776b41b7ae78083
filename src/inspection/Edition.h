#pragma once

#include "inspection/BuildScan.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// "Macintosh Edition" or "Windows Edition", by one byte before the last delimiter of the scan's
/// block; "不明" if the byte is missing or has another value.
String EditionText(const ScanResult& scan, const BuildPattern& pattern);

}  // namespace vintrace::inspection
