#include "support/RecordingReport.h"

#include <utility>

#include "inspection/VersionCheck.h"

namespace vintrace::test {

void RecordingReport::SetProductText(const String& text) {
  fields.productText = text;
  if (betweenHeaderAndScan) std::exchange(betweenHeaderAndScan, nullptr)();
}

ReportFields Inspect(const FolderItem& item) {
  RecordingReport report;
  inspection::VersionCheck(item, report);
  return report.fields;
}

}  // namespace vintrace::test
