#include "support/ReferenceInspection.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Written apart from the program's inspection and kept plain on purpose: the byte patterns are
// spelled out row by row, and every loop goes byte by byte. Don't share code with the program here.

namespace vintrace::test {
namespace {

constexpr int kNoByte = -1;

// The byte at a position counted from 1; kNoByte before the first byte and after the last.
int ByteAt(std::string_view bytes, std::int64_t position) {
  if (position < 1) return kNoByte;
  if (position > static_cast<std::int64_t>(bytes.size())) return kNoByte;
  return static_cast<unsigned char>(bytes[static_cast<std::size_t>(position - 1)]);
}

bool IsDocumentName(std::string_view name) {
  if (name.size() < 5) return false;
  const char* end = name.data() + name.size();
  if (end[-5] != '.') return false;
  if (end[-4] != 'i' && end[-4] != 'I') return false;
  if (end[-3] != 'n' && end[-3] != 'N') return false;
  if (end[-2] != 'd' && end[-2] != 'D') return false;
  if (end[-1] != 'd' && end[-1] != 'D') return false;
  return true;
}

struct Release {
  std::string_view product;
  std::string_view picture;
  std::string_view prefix;
  std::string_view littleDelimiter;
  std::string_view bigDelimiter;
};

// `following` is the byte after the major version; it matters for version 7 only.
std::optional<Release> ReleaseOf(int version, int following) {
  if (version == 3)
    return Release{"Adobe InDesign CS", "cs", "3.", "\x09\x40\x33\x2E", "\x40\x09\x33\x2E"};
  if (version == 4)
    return Release{"Adobe InDesign CS2", "cs2", "4.", "\x09\x40\x34\x2E", "\x40\x09\x34\x2E"};
  if (version == 5)
    return Release{"Adobe InDesign CS3", "cs3", "5.", "\x09\x40\x35\x2E", "\x40\x09\x35\x2E"};
  if (version == 6)
    return Release{"Adobe InDesign CS4", "cs4", "6.", "\x09\x40\x36\x2E", "\x40\x09\x36\x2E"};
  if (version == 7 && following == 5)
    return Release{"Adobe InDesign CS5.5", "cs55", "7.", "\x09\x40\x37\x2E", "\x40\x09\x37\x2E"};
  if (version == 7)
    return Release{"Adobe InDesign CS5", "cs5", "7.", "\x09\x40\x37\x2E", "\x40\x09\x37\x2E"};
  if (version == 8)
    return Release{"Adobe InDesign CS6", "cs6", "8.", "\x09\x40\x38\x2E", "\x40\x09\x38\x2E"};
  if (version == 9)
    return Release{"Adobe InDesign CC", "cc", "9.", "\x09\x40\x39\x2E", "\x40\x09\x39\x2E"};
  if (version == 10) {
    return Release{"Adobe InDesign CC 2014", "cc2014", "10.", "\x40\x31\x30\x2E",
                   "\x40\x31\x30\x2E"};
  }
  if (version == 11) {
    return Release{"Adobe InDesign CC 2015", "cc2015", "11.", "\x40\x31\x31\x2E",
                   "\x40\x31\x31\x2E"};
  }
  if (version == 12) {
    return Release{"Adobe InDesign CC 2017", "cc2017", "12.", "\x40\x31\x32\x2E",
                   "\x40\x31\x32\x2E"};
  }
  if (version == 13) {
    return Release{"Adobe InDesign CC 2018", "cc2018", "13.", "\x40\x31\x33\x2E",
                   "\x40\x31\x33\x2E"};
  }
  if (version == 14) {
    return Release{"Adobe InDesign CC 2019", "cc2019", "14.", "\x40\x31\x34\x2E",
                   "\x40\x31\x34\x2E"};
  }
  return std::nullopt;
}

// A file too short to hold the version byte counts as version 0. No number from 3 to 14 comes here:
// each of them is a known release.
std::string ProductOfUnknownRelease(int version) {
  if (version == kNoByte) version = 0;
  if (version < 3) return "InDesign CSより下位";
  if (version > 14) return "Ver." + std::to_string(version) + " CC2019より新しい";
  return "バージョン不明";
}

struct Block {
  std::string_view bytes;
  bool endsFile;
};

Block ReadBlock(std::string_view content, std::size_t offset) {
  if (offset >= content.size()) return {std::string_view(), true};
  const std::string_view bytes = content.substr(offset, 6144);
  return {bytes, offset + bytes.size() >= content.size()};
}

bool StandsAt(std::string_view bytes, std::size_t index, std::string_view wanted) {
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (index + i >= bytes.size()) return false;
    if (bytes[index + i] != wanted[i]) return false;
  }
  return true;
}

bool Holds(std::string_view bytes, std::string_view wanted) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (StandsAt(bytes, i, wanted)) return true;
  }
  return false;
}

// The first block with both patterns, else the block that ends the file.
std::string_view BlockWithBoth(std::string_view content, std::string_view marker,
                               std::string_view delimiter) {
  std::size_t offset = 40960;
  while (true) {
    const Block block = ReadBlock(content, offset);
    if (Holds(block.bytes, marker) && Holds(block.bytes, delimiter)) return block.bytes;
    if (block.endsFile) return block.bytes;
    offset += 4096;
  }
}

// The first block with the delimiter, else the block that ends the file.
std::string_view BlockWithDelimiter(std::string_view content, std::string_view delimiter) {
  std::size_t offset = 40960;
  while (true) {
    const Block block = ReadBlock(content, offset);
    if (Holds(block.bytes, delimiter)) return block.bytes;
    if (block.endsFile) return block.bytes;
    offset += 4096;
  }
}

// What lies on either side of the last delimiter of a block: `after` reaches to the end of the
// block, `before` back to the delimiter before it or to the start of the block. Without a delimiter
// both are the whole block. No delimiter can overlap itself, so each place where it stands counts.
struct Fields {
  std::string_view before;
  std::string_view after;
};

Fields FieldsAroundLastDelimiter(std::string_view block, std::string_view delimiter) {
  Fields fields{block, block};
  std::size_t start = 0;
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (!StandsAt(block, i, delimiter)) continue;
    fields.before = block.substr(start, i - start);
    start = i + delimiter.size();
    fields.after = block.substr(start);
  }
  return fields;
}

std::string BuildText(std::string_view prefix, std::string_view field) {
  const int seventh = ByteAt(field, 7);
  std::size_t length = 6;
  if (seventh >= 0x30 && seventh <= 0x39) length = 7;
  std::string text(prefix);
  for (std::size_t i = 0; i < length && i < field.size(); ++i) text += field[i];
  return text;
}

std::string EditionText(int byte) {
  if (byte == 0) return "Macintosh Edition";
  if (byte == 1) return "Windows Edition";
  if (byte == 3) return "Windows Edition";
  return "不明";
}

// The edition byte when the block was found by marker: its place counts from the field's end.
int EditionByteFromEnd(std::string_view field, bool bigEndian, std::string_view prefix) {
  const auto length = static_cast<std::int64_t>(field.size());
  if (bigEndian) return ByteAt(field, length - 11);
  if (prefix.size() == 2) return ByteAt(field, length - 12);
  return ByteAt(field, length - 13);
}

// The edition byte when the block was found by delimiter alone: its place counts from the start.
int EditionByteFromStart(std::string_view field, bool bigEndian) {
  if (bigEndian) return ByteAt(field, 23);
  return ByteAt(field, 19);
}

void FillUnknownRelease(ReferenceReport& report, int version) {
  report.picture = "und";
  report.productText = ProductOfUnknownRelease(version);
  report.editionText = "";
  report.openable = false;
}

void FillBuild(ReferenceReport& report, std::string_view prefix, std::string_view field) {
  report.buildText = BuildText(prefix, field);
  if (ByteAt(report.buildText, 3) == '5') {
    report.picture = "cs55";
    report.productText = "Adobe InDesign CS5.5";
  }
}

void FillFromBody(ReferenceReport& report, std::string_view content, bool bigEndian,
                  const Release& release) {
  std::string_view marker = "\x4E\x0E\x66\x6A\x30\xE6\x30";
  std::string_view delimiter = release.littleDelimiter;
  if (bigEndian) {
    marker = "\x4E\x0D\x66\x0E\x30\x6A\x30";
    delimiter = release.bigDelimiter;
  }

  std::string_view block = BlockWithBoth(content, marker, delimiter);
  if (block.empty()) {
    report.buildText = "不明";
    report.editionText = "不明";
    return;
  }
  const bool foundByMarkerScan = Holds(block, delimiter);
  if (!foundByMarkerScan) block = BlockWithDelimiter(content, delimiter);

  const Fields fields = FieldsAroundLastDelimiter(block, delimiter);
  FillBuild(report, release.prefix, fields.after);
  if (foundByMarkerScan) {
    report.editionText = EditionText(EditionByteFromEnd(fields.before, bigEndian, release.prefix));
  } else {
    report.editionText = EditionText(EditionByteFromStart(fields.before, bigEndian));
  }
}

}  // namespace

ReferenceReport InspectByReference(std::string_view name, std::string_view content) {
  ReferenceReport report;
  if (!IsDocumentName(name)) return report;
  report.window = true;
  report.documentName = std::string(name);
  report.buildText = "サブバージョン不明";

  const std::string_view header = content.substr(0, 48);
  const bool bigEndian = ByteAt(header, 25) == 2;
  const int version = bigEndian ? ByteAt(header, 33) : ByteAt(header, 30);
  const std::optional<Release> release = ReleaseOf(version, ByteAt(header, 34));
  if (!release) {
    FillUnknownRelease(report, version);
    return report;
  }
  report.picture = std::string(release->picture);
  report.productText = std::string(release->product);
  FillFromBody(report, content, bigEndian, *release);
  return report;
}

}  // namespace vintrace::test
