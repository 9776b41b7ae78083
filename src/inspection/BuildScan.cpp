#include "inspection/BuildScan.h"

#include <optional>

#include "inspection/Blocks.h"
#include "inspection/ByteString.h"
#include "inspection/ReleaseTable.h"

namespace vintrace::inspection {
namespace {

// Parts of the UTF-16 text 不明なユ: its first seven bytes in big-endian order, its last seven in
// little-endian order.
constexpr std::string_view MarkerLittle = "\x4E\x0E\x66\x6A\x30\xE6\x30";
constexpr std::string_view MarkerBig = "\x4E\x0D\x66\x0E\x30\x6A\x30";

// The 16-bit value 0x4009 before a major version of one digit; the byte 0x40 before one of two
// digits, in both byte orders.
constexpr std::string_view LeadLittle = "\x09\x40";
constexpr std::string_view LeadBig = "\x40\x09";
constexpr std::string_view LeadOfTwoDigits = "\x40";

std::string_view DelimiterLead(DocumentByteOrder order, std::string_view buildPrefix) {
  constexpr std::int64_t OneDigitAndPoint = 2;
  if (LenB(buildPrefix) > OneDigitAndPoint) return LeadOfTwoDigits;
  return order == DocumentByteOrder::Big ? LeadBig : LeadLittle;
}

bool Holds(std::string_view block, std::string_view needle) { return InStrB(0, block, needle) > 0; }

std::string_view BuildField(const ScanResult& scan, const BuildPattern& pattern) {
  return NthFieldB(scan.block, pattern.BuildDelimiter, scan.count);
}

ScanResult ResultOf(ScanKind kind, std::string_view block, const BuildPattern& pattern) {
  return {kind, ScanBlock(block), CountFieldsB(block, pattern.BuildDelimiter)};
}

}  // namespace

BuildPattern PatternOf(DocumentByteOrder order, std::string_view buildPrefix) {
  return {.order = order,
          .BuildPrefix = String(buildPrefix),
          .BuildMarker = String(order == DocumentByteOrder::Big ? MarkerBig : MarkerLittle),
          .BuildDelimiter = String(DelimiterLead(order, buildPrefix)).append(buildPrefix)};
}

ScanResult ScanForBuild(const FolderItem& item, const BuildPattern& pattern) {
  Blocks blocks(item, pattern.BuildDelimiter);
  std::optional<ScanBlock> first;
  while (true) {
    const std::string_view block = blocks.Next();
    const bool has = Holds(block, pattern.BuildDelimiter);
    const bool isFound = has && (blocks.IsLast() || Holds(block, pattern.BuildMarker));
    if (isFound || block.empty()) return ResultOf(ScanKind::MarkerScan, block, pattern);
    if (!first) first = block;
    if (!has) return ResultOf(ScanKind::DelimiterScan, *first, pattern);
  }
}

String BuildText(const ScanResult& scan, const BuildPattern& pattern) {
  const std::string_view field = BuildField(scan, pattern);
  const std::int64_t length = BeginsWithDigit(MidB(field, 7, 1)) ? 7 : 6;
  return pattern.BuildPrefix + String(LeftB(field, length));
}

void ReportBuild(const ScanResult& scan, const BuildPattern& pattern, InspectionReport& report) {
  if (scan.kind == ScanKind::MarkerScan && scan.count < 1) {
    report.SetBuildText(String(UnknownText));
    return;
  }
  report.SetBuildText(BuildText(scan, pattern));
  if (TextEquals(MidB(report.BuildText(), 3, 1), "5")) {
    report.SetPicture(RowOfCS55().picture);
    report.SetProductText(String(RowOfCS55().productText));
  }
}

}  // namespace vintrace::inspection
