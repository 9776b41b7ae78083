#include "inspection/BuildScan.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "inspection/Edition.h"
#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/TemporaryFolder.h"

namespace vintrace::inspection {
namespace {

using test::BodyStart;
using test::DocumentBuilder;

TEST(BuildScan, AFileThatShrinksBetweenTheScansLeavesThePrefixAlone) {
  const test::TemporaryFolder folder;
  const FolderItem item = folder.File("a.indd", DocumentBuilder(BodyStart + 10).Release(8).Bytes());
  const BuildPattern pattern = PatternOf(DocumentByteOrder::Little, "8.");
  ASSERT_EQ(MarkerScan(item, pattern).count, 1);
  std::filesystem::resize_file(item.NativePath(), BodyStart);
  const ScanResult scan = DelimiterScan(item, pattern);
  test::RecordingReport report;
  ReportBuild(scan, pattern, report);
  EXPECT_EQ(report.fields.buildText, "8.");
  EXPECT_EQ(EditionText(scan, pattern), "不明");
}

}  // namespace
}  // namespace vintrace::inspection
