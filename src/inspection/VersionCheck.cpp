#include "inspection/VersionCheck.h"

#include "inspection/BuildScan.h"
#include "inspection/ByteString.h"
#include "inspection/Edition.h"
#include "inspection/HeaderBlock.h"
#include "inspection/ReleaseTable.h"
#include "platform/files/BinaryStream.h"

namespace vintrace::inspection {
namespace {

HeaderBlock ReadHeader(const FolderItem& item) {
  return HeaderBlock(BinaryStream::Open(item, false).Read(HeaderBlock::Size, nullptr));
}

void ReportOutOfTable(const HeaderBlock& header, InspectionReport& report) {
  report.SetPicture("und");
  report.SetProductText(OutOfTableText(Asc(header.VersionByte())));
  report.SetEditionText("");
  report.SetOpenable(false);
}

void ReportRelease(const FolderItem& item, DocumentByteOrder order, const VersionRow& row,
                   InspectionReport& report) {
  report.SetPicture(row.picture);
  report.SetProductText(String(row.productText));
  const BuildPattern pattern = PatternOf(order, row.BuildPrefix);
  const ScanResult scan = ScanForBuild(item, pattern);
  ReportBuild(scan, pattern, report);
  report.SetEditionText(EditionText(scan, pattern));
}

}  // namespace

bool IsDocumentName(std::string_view name) { return TextEndsWith(name, ".indd"); }

void VersionCheck(const FolderItem& item, InspectionReport& report) {
  report.SetDocumentName(item.Name());
  report.SetDocument(item);
  const HeaderBlock header = ReadHeader(item);
  if (const VersionRow* row = header.Row()) {
    ReportRelease(item, header.ByteOrder(), *row, report);
  } else {
    ReportOutOfTable(header, report);
  }
}

}  // namespace vintrace::inspection
