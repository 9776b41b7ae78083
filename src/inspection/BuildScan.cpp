#include "inspection/BuildScan.h"

#include <utility>

#include "inspection/ByteString.h"
#include "inspection/ReleaseTable.h"
#include "platform/files/BinaryStream.h"

namespace vintrace::inspection {
namespace {

constexpr std::uint64_t FirstBlockOffset = 40960;
constexpr std::uint64_t BlockStride = 4096;
constexpr std::size_t BlockSize = 6144;

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

/// The first block for which `satisfies` is true, otherwise the block that reaches the end of the
/// file.
template <class Predicate>
ScanBlock FinalBlock(const FolderItem& item, Predicate satisfies) {
  BinaryStream stream = BinaryStream::Open(item, false);
  for (std::uint64_t offset = FirstBlockOffset;; offset += BlockStride) {
    stream.SetPosition(offset);
    ScanBlock block = stream.Read(BlockSize, nullptr);
    if (satisfies(block) || stream.EndOfFile()) return block;
  }
}

std::string_view BuildField(const ScanResult& scan, const BuildPattern& pattern) {
  return NthFieldB(scan.block, pattern.BuildDelimiter, scan.count);
}

ScanResult ResultOf(ScanKind kind, ScanBlock block, const BuildPattern& pattern) {
  const std::int64_t count = CountFieldsB(block, pattern.BuildDelimiter);
  return {kind, std::move(block), count};
}

}  // namespace

BuildPattern PatternOf(DocumentByteOrder order, std::string_view buildPrefix) {
  return {.order = order,
          .BuildPrefix = String(buildPrefix),
          .BuildMarker = String(order == DocumentByteOrder::Big ? MarkerBig : MarkerLittle),
          .BuildDelimiter = String(DelimiterLead(order, buildPrefix)).append(buildPrefix)};
}

ScanResult MarkerScan(const FolderItem& item, const BuildPattern& pattern) {
  ScanBlock block = FinalBlock(item, [&](std::string_view candidate) {
    return Holds(candidate, pattern.BuildMarker) && Holds(candidate, pattern.BuildDelimiter);
  });
  return ResultOf(ScanKind::MarkerScan, std::move(block), pattern);
}

ScanResult DelimiterScan(const FolderItem& item, const BuildPattern& pattern) {
  ScanBlock block = FinalBlock(
      item, [&](std::string_view candidate) { return Holds(candidate, pattern.BuildDelimiter); });
  return ResultOf(ScanKind::DelimiterScan, std::move(block), pattern);
}

ScanResult ScanForBuild(const FolderItem& item, const BuildPattern& pattern) {
  ScanResult scan = MarkerScan(item, pattern);
  const bool isWithoutDelimiter = scan.count == 1;
  return isWithoutDelimiter ? DelimiterScan(item, pattern) : scan;
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
