#include "inspection/Edition.h"

#include <algorithm>
#include <array>

#include "inspection/ByteString.h"

namespace vintrace::inspection {
namespace {

struct EditionRow {
  std::uint8_t value;
  Edition edition;
};

constexpr std::array<EditionRow, 3> Editions{{
    {0, Edition::Macintosh},
    {1, Edition::Windows},
    {3, Edition::Windows},
}};

/// The field before the last delimiter; without a delimiter, the whole block.
std::string_view EditionField(const ScanResult& scan, const BuildPattern& pattern) {
  return NthFieldB(scan.block, pattern.BuildDelimiter, std::max<std::int64_t>(scan.count - 1, 1));
}

/// The byte that gives the edition; empty if the field is too short. Its place is counted from the
/// field's end after a `MarkerScan`, and from its start after a `DelimiterScan`.
std::string_view EditionByte(const ScanResult& scan, const BuildPattern& pattern) {
  const std::string_view field = EditionField(scan, pattern);
  const bool big = pattern.order == DocumentByteOrder::Big;
  if (scan.kind == ScanKind::DelimiterScan) return MidB(field, big ? 23 : 19, 1);
  return MidB(field, LenB(field) - (big ? 11 : 10 + LenB(pattern.BuildPrefix)), 1);
}

}  // namespace

std::optional<Edition> EditionOf(const ScanResult& scan, const BuildPattern& pattern) {
  const std::string_view byte = EditionByte(scan, pattern);
  const auto row = std::ranges::find_if(
      Editions, [&](const EditionRow& each) { return TextEquals(byte, ChrB(each.value)); });
  return row == Editions.end() ? std::nullopt : std::optional(row->edition);
}

String EditionText(const ScanResult& scan, const BuildPattern& pattern) {
  const auto edition = EditionOf(scan, pattern);
  if (!edition) return String(UnknownText);
  return *edition == Edition::Macintosh ? "Macintosh Edition" : "Windows Edition";
}

}  // namespace vintrace::inspection
