#include "support/ReferenceInspection.h"

#include <cstdint>

// Written apart from the program's inspection and kept plain on purpose: every loop goes byte by
// byte. Don't share code with the program here.

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
  const auto length = static_cast<std::int64_t>(name.size());
  const auto isLetter = [&](std::int64_t fromEnd, char small, char large) {
    const int byte = ByteAt(name, length - fromEnd);
    return byte == small || byte == large;
  };
  return ByteAt(name, length - 4) == '.' && isLetter(3, 'i', 'I') && isLetter(2, 'n', 'N') &&
         isLetter(1, 'd', 'D') && isLetter(0, 'd', 'D');
}

struct Release {
  std::string product;
  PictureAccessor picture;
};

// `following` is the byte after the major version; it matters for version 7 only.
std::optional<Release> ReleaseOf(int version, int following) {
  using namespace pictures;
  if (version == 7 && following == 5) return Release{"Adobe InDesign CS5.5", cs55};
  const Release releases[] = {
      {"Adobe InDesign CS", cs},          {"Adobe InDesign CS2", cs2},
      {"Adobe InDesign CS3", cs3},        {"Adobe InDesign CS4", cs4},
      {"Adobe InDesign CS5", cs5},        {"Adobe InDesign CS6", cs6},
      {"Adobe InDesign CC", cc},          {"Adobe InDesign CC 2014", cc2014},
      {"Adobe InDesign CC 2015", cc2015}, {"Adobe InDesign CC 2017", cc2017},
      {"Adobe InDesign CC 2018", cc2018}, {"Adobe InDesign CC 2019", cc2019},
  };
  if (version < 3 || version > 14) return std::nullopt;
  return releases[version - 3];
}

// What stands before a build, such as 09 40 "8." in a little-endian document.
std::string DelimiterOf(int version, bool bigEndian) {
  const std::string prefix = std::to_string(version) + '.';
  if (version >= 10) return '\x40' + prefix;
  return (bigEndian ? "\x40\x09" : "\x09\x40") + prefix;
}

// A file too short to hold the version byte counts as version 0.
std::string ProductOfUnknownRelease(int version) {
  if (version < 3) return "InDesign CSより下位";
  return "Ver." + std::to_string(version) + " CC2019より新しい";
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
  return wanted.empty();
}

// The first block with both patterns, else the block that ends the file. Every block has a pattern
// without bytes.
std::string_view BlockWith(std::string_view content, std::string_view marker,
                           std::string_view delimiter) {
  std::size_t offset = 40960;
  while (true) {
    const Block block = ReadBlock(content, offset);
    if (Holds(block.bytes, marker) && Holds(block.bytes, delimiter)) return block.bytes;
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

void FillFromBody(ReportFields& report, std::string_view content, bool bigEndian, int version) {
  const std::string_view marker =
      bigEndian ? "\x4E\x0D\x66\x0E\x30\x6A\x30" : "\x4E\x0E\x66\x6A\x30\xE6\x30";
  const std::string delimiter = DelimiterOf(version, bigEndian);
  const std::string prefix = std::to_string(version) + '.';
  std::string_view block = BlockWith(content, marker, delimiter);
  if (block.empty()) {
    report.buildText = "不明";
    report.editionText = "不明";
    return;
  }
  const bool foundByMarkerScan = Holds(block, delimiter);
  if (!foundByMarkerScan) block = BlockWith(content, "", delimiter);

  const Fields fields = FieldsAroundLastDelimiter(block, delimiter);
  report.buildText = BuildText(prefix, fields.after);
  if (ByteAt(report.buildText, 3) == '5') {
    report.picture = pictures::cs55;
    report.productText = "Adobe InDesign CS5.5";
  }
  if (foundByMarkerScan) {
    report.editionText = EditionText(EditionByteFromEnd(fields.before, bigEndian, prefix));
  } else {
    report.editionText = EditionText(EditionByteFromStart(fields.before, bigEndian));
  }
}

}  // namespace

std::optional<ReportFields> InspectByReference(std::string_view name, std::string_view content) {
  if (!IsDocumentName(name)) return std::nullopt;
  ReportFields report;
  report.documentName = name;
  const std::string_view header = content.substr(0, 48);
  const bool bigEndian = ByteAt(header, 25) == 2;
  const int version = bigEndian ? ByteAt(header, 33) : ByteAt(header, 30);
  const std::optional<Release> release = ReleaseOf(version, ByteAt(header, 34));
  if (!release) {
    report.picture = pictures::und;
    report.productText = ProductOfUnknownRelease(version);
    report.openable = false;
    return report;
  }
  report.picture = release->picture;
  report.productText = release->product;
  FillFromBody(report, content, bigEndian, version);
  return report;
}

}  // namespace vintrace::test
