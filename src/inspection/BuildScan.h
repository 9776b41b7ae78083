#pragma once

#include <cstdint>
#include <string_view>

#include "inspection/HeaderBlock.h"
#include "inspection/InspectionReport.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// What tells the build's place in a document of one byte order and one release.
struct BuildPattern {
  DocumentByteOrder order;
  String prefix;     ///< The release's `buildPrefix`, with which the build text begins.
  String marker;     ///< Stands near the build.
  String delimiter;  ///< Stands right before the rest of the build text; it ends in the prefix.
};

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

/// The build text: the prefix and the 6 or 7 bytes behind the last delimiter of the block, or the
/// first ones of a block that has none.
String CutBuildText(const ScanResult& scan, const BuildPattern& pattern);

/// Writes the build text into `report`; "不明" when the `MarkerScan` found no data. A text whose
/// third byte is the digit 5 makes the product and the picture those of CS5.5, whatever the
/// release.
void ReportBuild(const ScanResult& scan, const BuildPattern& pattern, InspectionReport& report);

}  // namespace vintrace::inspection
