#include "inspection/VersionCheck.h"

#include "inspection/BuildScan.h"
#include "inspection/ByteString.h"
#include "inspection/Edition.h"
#include "inspection/HeaderBlock.h"
#include "inspection/ReleaseTable.h"
#include "platform/files/BinaryStream.h"
#include "platform/text/Exceptions.h"

namespace vintrace::inspection {
namespace {

HeaderBlock ReadHeader(const FolderItem& item) {
  return HeaderBlock(BinaryStream::Open(item, false).Read(HeaderBlock::Size, nullptr));
}

/// The value of one byte; nil for no byte.
std::optional<std::int64_t> ValueOf(std::string_view byte) {
  return byte.empty() ? std::nullopt : std::optional(Asc(byte));
}

Findings FindingsOf(const HeaderBlock& header) {
  return {.order = header.ByteOrder(),
          .majorVersion = ValueOf(header.VersionByte()),
          .minorVersion = ValueOf(header.MinorVersionByte()),
          .edition = {},
          .build = {}};
}

void ReportOutOfTable(const HeaderBlock& header, InspectionReport& report) {
  report.SetPicture("und");
  report.SetProductText(OutOfTableText(Asc(header.VersionByte())));
  report.SetEditionText("");
  report.SetOpenable(false);
  report.SetFindings(FindingsOf(header));
}

void ReportRelease(const FolderItem& item, const HeaderBlock& header, const VersionRow& row,
                   InspectionReport& report) {
  report.SetPicture(row.picture);
  report.SetProductText(String(row.productText));
  const BuildPattern pattern = PatternOf(header.ByteOrder(), row.BuildPrefix);
  const ScanResult scan = ScanForBuild(item, pattern);
  ReportBuild(scan, pattern, report);
  report.SetEditionText(EditionText(scan, pattern));
  Findings findings = FindingsOf(header);
  if (scan.count > 1) {  // Otherwise these texts are taken from any bytes.
    findings.edition = EditionOf(scan, pattern);
    findings.build = BuildText(scan, pattern);
  }
  report.SetFindings(findings);
}

}  // namespace

bool IsDocumentName(std::string_view name) { return TextEndsWith(name, ".indd"); }

void VersionCheck(const FolderItem& item, InspectionReport& report, Signature signature) {
  report.SetDocumentName(item.Name());
  report.SetDocument(item);
  const HeaderBlock header = ReadHeader(item);
  if (signature == Signature::Required && !header.HasSignature()) {
    throw RuntimeException(item.NativePath() + ": This isn't an InDesign document");
  }
  if (const VersionRow* row = header.Row()) {
    ReportRelease(item, header, *row, report);
  } else {
    ReportOutOfTable(header, report);
  }
}

}  // namespace vintrace::inspection
