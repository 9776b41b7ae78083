// Documents whose report is to be read here, or that the comparison doesn't generate.

#include "inspection/VersionCheck.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "inspection/BuildScan.h"
#include "inspection/Edition.h"
#include "platform/Exceptions.h"
#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

constexpr std::uint8_t Mac = 0;
constexpr std::uint8_t Windows = 1;

ReportFields InspectBytes(const std::string& bytes) {
  const TemporaryFolder folder;
  return Inspect(folder.File("a.indd", bytes));
}

DocumentBuilder CS6(std::size_t bodySize) {
  return DocumentBuilder(BodyStart + bodySize).Release(8);
}

TEST(VersionCheck, TellsReleaseEditionAndBuild) {
  const struct {
    std::string_view claim;
    DocumentBuilder document;
    ReportFields report;
  } cases[] = {
      {"marker and delimiter too far apart for one block: byte 19 before the delimiter decides",
       CS6(4 * BlockStride)
           .Marker(BodyStart + 10)
           .Put(BodyStart + BlockStride + 18, "\x03")
           .Delimiter(BodyStart + BlockStride + 2048, "0.0.444x"),
       {"a.indd", "Adobe InDesign CS6", pictures::cs6, "Windows Edition", "8.0.0.444"}},
      {"byte 34 makes it CS5.5; a seventh byte that is no digit isn't of the build",
       DocumentBuilder(BodyStart).BigEndian().Release(7, 5).Saved(BodyStart, Windows, "0.0.45\x01"),
       {"a.indd", "Adobe InDesign CS5.5", pictures::cs55, "Windows Edition", "7.0.0.45"}},
      {"a third byte of 5 in the build makes it CS5.5, whatever the release",
       CS6(1000).Saved(BodyStart, 2, "5.0.142x"),
       {"a.indd", "Adobe InDesign CS5.5", pictures::cs55, "不明", "8.5.0.142"}},
  };
  for (const auto& [claim, document, report] : cases) {
    EXPECT_EQ(InspectBytes(document.Bytes()), report) << claim;
  }
}

TEST(VersionCheck, ADocumentThatCannotBeReadIsNamedBeforeItIsOpened) {
  const TemporaryFolder folder;
  RecordingReport report;
  EXPECT_THROW(inspection::VersionCheck(folder.Item("missing.indd"), report), IOException);
  EXPECT_EQ(report.fields.documentName, "missing.indd");
}

TEST(VersionCheck, AFileThatShrinksBeforeTheFirstScanHasNoBuildAndOneBeforeTheSecondHasThePrefix) {
  const TemporaryFolder folder;
  const FolderItem item = folder.File("a.indd", CS6(500).Saved(BodyStart, Mac, "0.0.1").Bytes());
  RecordingReport report;
  report.betweenHeaderAndScan = [&] { std::filesystem::resize_file(item.NativePath(), BodyStart); };
  inspection::VersionCheck(item, report);
  EXPECT_EQ(report.fields.buildText, "不明");
  EXPECT_EQ(report.fields.editionText, "不明");

  const auto pattern = inspection::PatternOf(inspection::DocumentByteOrder::Little, "8.");
  const auto scan = inspection::DelimiterScan(item, pattern);
  inspection::ReportBuild(scan, pattern, report);
  EXPECT_EQ(report.fields.buildText, "8.");
  EXPECT_EQ(inspection::EditionText(scan, pattern), "不明");
}

}  // namespace
}  // namespace vintrace::test
