#pragma once

#include <cstdint>
#include <string_view>

#include "inspection/HeaderBlock.h"
#include "inspection/InspectionReport.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// The bytes that mark the build in documents of one byte order and release.
struct BuildPattern {
  DocumentByteOrder order;
  String BuildPrefix;     ///< The start of the build text, from the release table.
  String BuildMarker;     ///< Seven bytes near the build.
  String BuildDelimiter;  ///< Four bytes right before the rest of the build text.
};

BuildPattern PatternOf(DocumentByteOrder order, std::string_view buildPrefix);

/// How a block was found: by the marker and the delimiter, or by the delimiter alone.
enum class ScanKind { MarkerScan, DelimiterScan };

/// The bytes of a block of a document; see `Blocks`.
using ScanBlock = String;

/// The result of the scan.
struct ScanResult {
  ScanKind kind;
  ScanBlock block;     ///< The block that was found.
  std::int64_t count;  ///< The number of fields between delimiters in `block`; 0 if it is empty.
};

/// The kind `MarkerScan` is the first block with marker and delimiter, otherwise the last block, if
/// it has the delimiter or is empty. The kind `DelimiterScan` is the first block with the
/// delimiter, otherwise the last block. Reads each byte at most once, holds at most 256 KB, and
/// raises `IOException` if the file can't be read.
ScanResult ScanForBuild(const FolderItem& item, const BuildPattern& pattern);

/// The prefix, and 6 bytes after the block's last delimiter, or 7 if the seventh is a digit.
/// Without a delimiter, these bytes are the first ones of the block.
String BuildText(const ScanResult& scan, const BuildPattern& pattern);

/// Writes the build text into `report`; "不明" if the document has no block. If the third byte of
/// the text is "5", also changes the product and the picture to those of CS5.5, whatever the
/// release.
void ReportBuild(const ScanResult& scan, const BuildPattern& pattern, InspectionReport& report);

}  // namespace vintrace::inspection
