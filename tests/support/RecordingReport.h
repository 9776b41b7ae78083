#pragma once

#include "inspection/InspectionReport.h"
#include "inspection/VersionCheck.h"
#include "support/ReportFields.h"

namespace vintrace::test {

/// Stores a report for comparison.
class RecordingReport : public inspection::InspectionReport {
 public:
  ReportFields fields;

  void SetDocument(const FolderItem&) override {}
  void SetDocumentName(const String&) override {}
  void SetProductText(const String& text) override { fields.productText = text; }
  void SetPicture(std::string_view name) override { fields.picture = name; }
  void SetBuildText(const String& text) override { fields.buildText = text; }
  String BuildText() const override { return fields.buildText; }
  void SetEditionText(const String& text) override { fields.editionText = text; }
  void SetOpenable(bool openable) override { fields.openable = openable; }
};

/// Inspects the document `item`.
inline ReportFields Inspect(const FolderItem& item) {
  RecordingReport report;
  inspection::VersionCheck(item, report);
  return report.fields;
}

}  // namespace vintrace::test
