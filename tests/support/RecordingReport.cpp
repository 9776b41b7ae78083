#include "support/RecordingReport.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

#include "inspection/VersionCheck.h"

namespace vintrace::test {
namespace {

using NamedPicture = std::pair<PictureAccessor, std::string_view>;

constexpr std::array<NamedPicture, 14> ReportPictures{{
    {pictures::cs, "cs"},
    {pictures::cs2, "cs2"},
    {pictures::cs3, "cs3"},
    {pictures::cs4, "cs4"},
    {pictures::cs5, "cs5"},
    {pictures::cs55, "cs55"},
    {pictures::cs6, "cs6"},
    {pictures::cc, "cc"},
    {pictures::cc2014, "cc2014"},
    {pictures::cc2015, "cc2015"},
    {pictures::cc2017, "cc2017"},
    {pictures::cc2018, "cc2018"},
    {pictures::cc2019, "cc2019"},
    {pictures::und, "und"},
}};

}  // namespace

std::ostream& operator<<(std::ostream& out, const ReportFields& fields) {
  return out << '[' << fields.documentName << " | " << fields.productText << " | " << fields.picture
             << " | " << fields.editionText << " | " << fields.buildText << " | "
             << (fields.openable ? "openable" : "not openable") << ']';
}

void RecordingReport::SetProductText(const String& text) {
  fields.productText = text;
  if (betweenHeaderAndScan) std::exchange(betweenHeaderAndScan, nullptr)();
}

void RecordingReport::SetPicture(PictureAccessor picture) {
  fields.picture = std::ranges::find(ReportPictures, picture, &NamedPicture::first)->second;
}

ReportFields Inspect(const FolderItem& item) {
  RecordingReport report;
  inspection::VersionCheck(item, report);
  return report.fields;
}

}  // namespace vintrace::test
