#include "inspection/ReleaseTable.h"

#include <algorithm>
#include <array>

#include "inspection/ByteString.h"

namespace vintrace::inspection {
namespace {

constexpr std::array<VersionRow, 12> Releases{{
    {3, "Adobe InDesign CS", "cs", "3."},
    {4, "Adobe InDesign CS2", "cs2", "4."},
    {5, "Adobe InDesign CS3", "cs3", "5."},
    {6, "Adobe InDesign CS4", "cs4", "6."},
    {7, "Adobe InDesign CS5", "cs5", "7."},
    {8, "Adobe InDesign CS6", "cs6", "8."},
    {9, "Adobe InDesign CC", "cc", "9."},
    {10, "Adobe InDesign CC 2014", "cc2014", "10."},
    {11, "Adobe InDesign CC 2015", "cc2015", "11."},
    {12, "Adobe InDesign CC 2017", "cc2017", "12."},
    {13, "Adobe InDesign CC 2018", "cc2018", "13."},
    {14, "Adobe InDesign CC 2019", "cc2019", "14."},
}};

constexpr VersionRow CS55{7, "Adobe InDesign CS5.5", "cs55", "7."};

constexpr std::uint8_t MinorVersionOfCS55 = 5;

}  // namespace

const VersionRow* FindRow(std::string_view versionByte, std::string_view minorVersion) {
  const auto row = std::ranges::find_if(
      Releases, [&](const VersionRow& r) { return TextEquals(versionByte, ChrB(r.VersionByte)); });
  if (row == Releases.end()) return nullptr;
  const bool isCS55 =
      row->VersionByte == CS55.VersionByte && TextEquals(minorVersion, ChrB(MinorVersionOfCS55));
  return isCS55 ? &CS55 : &*row;
}

const VersionRow& RowOfCS55() { return CS55; }

String OutOfTableText(std::int64_t version) {
  if (version < Releases.front().VersionByte) return "InDesign CSより下位";
  if (version > Releases.back().VersionByte) return "Ver." + Str(version) + " CC2019より新しい";
  return "バージョン不明";
}

}  // namespace vintrace::inspection
