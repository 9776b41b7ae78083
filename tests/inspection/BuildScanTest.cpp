#include "inspection/BuildScan.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "inspection/Edition.h"
#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/TemporaryFolder.h"

namespace vintrace::inspection {
namespace {

using test::BlockStride;
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

TEST(BuildScan, StopsAtTheFirstBlockThatSatisfiesIt) {
  const test::TemporaryFolder folder;
  DocumentBuilder document(BodyStart + 5 * BlockStride);
  document.Release(8).Delimiter(BodyStart + 100).Saved(BodyStart + 2 * BlockStride + 2100, 0, "");
  const FolderItem item = folder.File("a.indd", document.Bytes());
  const BuildPattern pattern = PatternOf(DocumentByteOrder::Little, "8.");
  const auto blockAt = [&](std::size_t stride) {
    return document.Bytes().substr(BodyStart + stride * BlockStride, test::BlockSize);
  };
  EXPECT_EQ(MarkerScan(item, pattern).block, blockAt(2));
  EXPECT_EQ(DelimiterScan(item, pattern).block, blockAt(0));
}

}  // namespace
}  // namespace vintrace::inspection
