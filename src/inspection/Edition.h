#pragma once

#include "inspection/BuildScan.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// "Macintosh Edition" or "Windows Edition", by one byte near the last delimiter of the scan's
/// block; "不明" when the byte is neither's, or isn't there.
String EditionText(const ScanResult& scan, const BuildPattern& pattern);

}  // namespace vintrace::inspection
