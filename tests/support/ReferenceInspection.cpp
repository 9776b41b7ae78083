#include "support/ReferenceInspection.h"

#include <cstdint>

// Plain on purpose, and independent of the program's inspection. Don't share code with the program.

namespace vintrace::test {
namespace {

// The byte at a 1-based position; -1 before the first byte and after the last.
int ByteAt(std::string_view bytes, std::int64_t position) {
  if (position < 1 || position > static_cast<std::int64_t>(bytes.size())) return -1;
  return static_cast<unsigned char>(bytes[static_cast<std::size_t>(position - 1)]);
}

struct Release {
  const char* product;
  const char* picture;
};

constexpr Release CS55{"Adobe InDesign CS5.5", "cs55"};
constexpr Release ReleasesFrom3To14[] = {
    {"Adobe InDesign CS", "cs"},          {"Adobe InDesign CS2", "cs2"},
    {"Adobe InDesign CS3", "cs3"},        {"Adobe InDesign CS4", "cs4"},
    {"Adobe InDesign CS5", "cs5"},        {"Adobe InDesign CS6", "cs6"},
    {"Adobe InDesign CC", "cc"},          {"Adobe InDesign CC 2014", "cc2014"},
    {"Adobe InDesign CC 2015", "cc2015"}, {"Adobe InDesign CC 2017", "cc2017"},
    {"Adobe InDesign CC 2018", "cc2018"}, {"Adobe InDesign CC 2019", "cc2019"},
};

void SetRelease(ReportFields& report, const Release& release) {
  report.productText = release.product;
  report.picture = release.picture;
}

bool Holds(std::string_view bytes, std::string_view wanted) {
  return bytes.find(wanted) != std::string_view::npos;
}

// The first block with both patterns, otherwise the block at the end of the file. An empty pattern
// is in every block.
std::string_view BlockWith(std::string_view content, std::string_view marker,
                           std::string_view delimiter) {
  for (std::size_t offset = 40960; offset < content.size(); offset += 4096) {
    const std::string_view block = content.substr(offset, 6144);
    const bool endsFile = offset + block.size() >= content.size();
    if (endsFile || (Holds(block, marker) && Holds(block, delimiter))) return block;
  }
  return {};
}

std::string EditionText(int byte) {
  if (byte == 0) return "Macintosh Edition";
  return byte == 1 || byte == 3 ? "Windows Edition" : "不明";
}

void FillFromBody(ReportFields& report, std::string_view content, bool bigEndian, int version) {
  const std::string_view marker =
      bigEndian ? "\x4E\x0D\x66\x0E\x30\x6A\x30" : "\x4E\x0E\x66\x6A\x30\xE6\x30";
  const std::string prefix = std::to_string(version) + '.';
  const std::string lead = version >= 10 ? "\x40" : bigEndian ? "\x40\x09" : "\x09\x40";
  const std::string delimiter = lead + prefix;
  std::string_view block = BlockWith(content, marker, delimiter);
  if (block.empty()) {
    report.buildText = "不明";
    report.editionText = "不明";
    return;
  }
  const bool foundByMarkerScan = Holds(block, delimiter);
  if (!foundByMarkerScan) block = BlockWith(content, "", delimiter);

  // The fields before and after the last delimiter; without one, both are the whole block. No
  // delimiter can overlap itself.
  std::string_view before = block;
  std::string_view after = block;
  if (const auto last = block.rfind(delimiter); last != std::string_view::npos) {
    after = block.substr(last + delimiter.size());
    before = block.substr(0, last);
    const auto previous = before.rfind(delimiter);
    if (previous != std::string_view::npos) before = before.substr(previous + delimiter.size());
  }
  const int seventh = ByteAt(after, 7);
  const bool isSevenLong = seventh >= 0x30 && seventh <= 0x39;
  report.buildText = prefix + std::string(after.substr(0, isSevenLong ? 7 : 6));
  if (ByteAt(report.buildText, 3) == '5') SetRelease(report, CS55);

  const auto end = static_cast<std::int64_t>(before.size());
  const int fromEnd = bigEndian ? 11 : version < 10 ? 12 : 13;
  const int fromStart = bigEndian ? 23 : 19;
  report.editionText = EditionText(ByteAt(before, foundByMarkerScan ? end - fromEnd : fromStart));
}

}  // namespace

ReportFields InspectByReference(std::string_view content) {
  ReportFields report;
  const bool bigEndian = ByteAt(content, 25) == 2;
  const int version = ByteAt(content, bigEndian ? 33 : 30);
  if (version >= 3 && version <= 14) {
    const bool isCS55 = version == 7 && ByteAt(content, 34) == 5;
    SetRelease(report, isCS55 ? CS55 : ReleasesFrom3To14[version - 3]);
    FillFromBody(report, content, bigEndian, version);
    return report;
  }
  const bool isOld = version < 3;
  report.picture = "und";
  report.productText =
      isOld ? "InDesign CSより下位" : "Ver." + std::to_string(version) + " CC2019より新しい";
  report.openable = false;
  return report;
}

}  // namespace vintrace::test
