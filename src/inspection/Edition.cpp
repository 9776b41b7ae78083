#include "inspection/Edition.h"

#include <algorithm>
#include <array>

#include "inspection/ByteString.h"

namespace vintrace::inspection {
namespace {

struct EditionRow {
  std::uint8_t editionByte;
  std::string_view text;
};

constexpr std::array<EditionRow, 3> Editions{{
    {0, "Macintosh Edition"},
    {1, "Windows Edition"},
    {3, "Windows Edition"},
}};

/// The field before the last delimiter; without a delimiter, the whole block.
std::string_view EditionField(const ScanResult& scan, std::string_view delimiter) {
  return NthFieldB(scan.block, delimiter, std::max<std::int64_t>(scan.count - 1, 1));
}

/// The 1-based position of the edition byte, from the field's end after a `MarkerScan`, from its
/// start after a `DelimiterScan`. It may lie outside the field.
std::int64_t EditionPosition(ScanKind kind, const BuildPattern& pattern, std::string_view field) {
  const bool big = pattern.order == DocumentByteOrder::Big;
  if (kind == ScanKind::DelimiterScan) return big ? 23 : 19;
  return big ? LenB(field) - 11 : LenB(field) - 10 - LenB(pattern.prefix);
}

}  // namespace

String EditionText(const ScanResult& scan, const BuildPattern& pattern) {
  const std::string_view field = EditionField(scan, pattern.delimiter);
  const std::string_view editionByte = MidB(field, EditionPosition(scan.kind, pattern, field), 1);
  const auto row = std::ranges::find_if(
      Editions, [&](const EditionRow& r) { return TextEquals(editionByte, ChrB(r.editionByte)); });
  return String(row == Editions.end() ? UnknownText : row->text);
}

}  // namespace vintrace::inspection
