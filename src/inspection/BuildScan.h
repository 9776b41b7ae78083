#pragma once

#include <cstdint>
#include <string_view>

#include "inspection/InspectionReport.h"
#include "inspection/ReleaseTable.h"
#include "platform/FolderItem.h"
#include "platform/String.h"

namespace vintrace::inspection {

/// The bytes near which a document's build stands.
struct BuildPattern {
  String marker;
  String delimiter;  ///< Stands right before the build text, whose first part it holds.
};

/// The pattern in a document of that byte order and that release's `buildPrefix`.
BuildPattern PatternOf(DocumentByteOrder order, std::string_view buildPrefix);

/// The two scans: for a block with marker and delimiter, and for one with the delimiter alone.
enum class ScanKind { MarkerScan, DelimiterScan };

/// Where a scan ended.
struct ScanResult {
  ScanKind kind;
  String block;        ///< The last block that was read, at most 6144 bytes.
  std::int64_t count;  ///< Fields that the delimiter divides the block into; 0: no data at all.
};

/// Reads the body of `item` block by block, from offset 40960 on, until a block satisfies the scan
/// or the file ends. At most one block is held at a time. Raise `IOException` when the file can't
/// be opened or read.
ScanResult MarkerScan(const FolderItem& item, const BuildPattern& pattern);
ScanResult DelimiterScan(const FolderItem& item, const BuildPattern& pattern);

/// The `MarkerScan`, and when that found data but no delimiter, the `DelimiterScan`.
ScanResult ScanForBuild(const FolderItem& item, const BuildPattern& pattern);

/// The build text: `buildPrefix` and the 6 or 7 bytes behind the last delimiter of the block, or
/// the first ones of a block that has none.
String CutBuildText(const ScanResult& scan, const BuildPattern& pattern,
                    std::string_view buildPrefix);

/// Writes the build text into `report`; "不明" when the scan found no data. A text whose third byte
/// is the digit 5 makes the product and the picture those of CS5.5, whatever the release.
void ReportBuild(const ScanResult& scan, const BuildPattern& pattern, std::string_view buildPrefix,
                 InspectionReport& report);

}  // namespace vintrace::inspection
