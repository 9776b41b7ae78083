#pragma once

#include <optional>

#include "inspection/BuildScan.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// The edition, by one byte before the last delimiter of the scan's block; nil if the byte is
/// missing or has another value.
std::optional<Edition> EditionOf(const ScanResult& scan, const BuildPattern& pattern);

/// "Macintosh Edition" or "Windows Edition"; "不明" if there is none.
String EditionText(const ScanResult& scan, const BuildPattern& pattern);

}  // namespace vintrace::inspection
