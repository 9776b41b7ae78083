#include "inspection/VersionCheck.h"

#include <gtest/gtest.h>

#include <filesystem>

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
  return Inspect(folder.File("sample.indd", bytes));
}

TEST(IsDocumentName, LooksAtTheLastFiveBytesInAnyCase) {
  for (const auto* name :
       {".indd", "a.indd", "SAMPLE.INDD", "a.InDd", "\xFF\xFE.indd", "a\tb\n.indd"}) {
    EXPECT_TRUE(inspection::IsDocumentName(name)) << name;
  }
  for (const auto* name :
       {"", "indd", "a.ind", "a.indd ", "a.indd.pdf", "a-indd", "a.\xC4\xB0ndd"}) {
    EXPECT_FALSE(inspection::IsDocumentName(name)) << name;
  }
}

struct ReleaseCase {
  int version;
  int byteBehind;
  std::string_view product;
  std::string_view picture;
  std::string_view build;
};

TEST(VersionCheck, TellsEveryReleaseOfTheTableInBothByteOrders) {
  const ReleaseCase cases[] = {
      {3, 0, "Adobe InDesign CS", "cs", "3.0.0.424"},
      {4, 0, "Adobe InDesign CS2", "cs2", "4.0.0.424"},
      {5, 0, "Adobe InDesign CS3", "cs3", "5.0.0.424"},
      {6, 5, "Adobe InDesign CS4", "cs4", "6.0.0.424"},
      {7, 0, "Adobe InDesign CS5", "cs5", "7.0.0.424"},
      {7, 4, "Adobe InDesign CS5", "cs5", "7.0.0.424"},
      {7, 5, "Adobe InDesign CS5.5", "cs55", "7.0.0.424"},
      {8, 5, "Adobe InDesign CS6", "cs6", "8.0.0.424"},
      {9, 0, "Adobe InDesign CC", "cc", "9.0.0.424"},
      {10, 0, "Adobe InDesign CC 2014", "cc2014", "10.0.0.424"},
      {11, 0, "Adobe InDesign CC 2015", "cc2015", "11.0.0.424"},
      {12, 0, "Adobe InDesign CC 2017", "cc2017", "12.0.0.424"},
      {13, 0, "Adobe InDesign CC 2018", "cc2018", "13.0.0.424"},
      {14, 0, "Adobe InDesign CC 2019", "cc2019", "14.0.0.424"},
  };
  for (const bool big : {false, true}) {
    for (const auto& row : cases) {
      DocumentBuilder document(BodyStart + 2000);
      if (big) document.BigEndian();
      document
          .Release(static_cast<std::uint8_t>(row.version),
                   static_cast<std::uint8_t>(row.byteBehind))
          .Saved(BodyStart + 100, Mac, "0.0.424\x01");
      EXPECT_EQ(InspectBytes(document.Bytes()),
                (ReportFields{.documentName = "sample.indd",
                              .productText = std::string(row.product),
                              .picture = std::string(row.picture),
                              .editionText = "Macintosh Edition",
                              .buildText = std::string(row.build),
                              .openable = true}))
          << row.version << (big ? " big" : " little");
    }
  }
}

TEST(VersionCheck, OutsideTheTableTellsTheVersionAndLeavesTheBuildUnwritten) {
  const std::pair<int, std::string_view> cases[] = {
      {0, "InDesign CSより下位"},        {1, "InDesign CSより下位"},
      {2, "InDesign CSより下位"},        {15, "Ver.15 CC2019より新しい"},
      {100, "Ver.100 CC2019より新しい"}, {255, "Ver.255 CC2019より新しい"},
  };
  for (const auto& [version, product] : cases) {
    DocumentBuilder document(BodyStart + 2000);
    document.Release(static_cast<std::uint8_t>(version)).Saved(BodyStart + 100, Mac, "0.0.424");
    EXPECT_EQ(InspectBytes(document.Bytes()), (ReportFields{.documentName = "sample.indd",
                                                            .productText = std::string(product),
                                                            .picture = "und",
                                                            .editionText = "",
                                                            .buildText = "サブバージョン不明",
                                                            .openable = false}));
  }
}

TEST(VersionCheck, OnlyTheValue2AtByte25IsBigEndian) {
  for (const int flag : {0, 1, 2, 3, 255}) {
    DocumentBuilder document(48);
    document.Put(24, std::string(1, static_cast<char>(flag)));
    document.Put(29, std::string("\x03\0\0\x04", 4));
    EXPECT_EQ(InspectBytes(document.Bytes()).productText,
              flag == 2 ? "Adobe InDesign CS2" : "Adobe InDesign CS")
        << flag;
  }
}

TEST(VersionCheck, AFileThatEndsBeforeTheVersionIsBelowCS) {
  for (const std::size_t size : {0U, 1U, 24U, 25U, 29U}) {
    EXPECT_EQ(InspectBytes(std::string(size, '\x05')).productText, "InDesign CSより下位") << size;
  }
  for (const std::size_t size : {30U, 33U, 40960U, 40961U}) {
    EXPECT_EQ(InspectBytes(std::string(size, '\x05')).productText, "Adobe InDesign CS3") << size;
  }
  const std::string big = DocumentBuilder(29).BigEndian().Release(5).Bytes();
  EXPECT_EQ(InspectBytes(big.substr(0, 32)).productText, "InDesign CSより下位");
  EXPECT_EQ(InspectBytes(big.substr(0, 33)).productText, "Adobe InDesign CS3");
}

struct BodyCase {
  std::string_view claim;
  DocumentBuilder document;
  std::string_view build;
  std::string_view edition;
  std::string_view product = "Adobe InDesign CS6";
};

DocumentBuilder CS6(std::size_t bodySize) {
  return DocumentBuilder(BodyStart + bodySize).Release(8);
}

TEST(VersionCheck, FindsTheBuildAndTheEdition) {
  const std::size_t secondBlock = BodyStart + BlockStride;
  const std::size_t firstBlockEnd = BodyStart + BlockSize;
  const BodyCase cases[] = {
      {"a body without a byte has neither", CS6(0), "不明", "不明"},
      {"one byte of a body is cut as it is", CS6(1), "8.x", "不明"},
      {"without a delimiter, the first bytes of the last block are cut, and byte 19 decides",
       CS6(1000).Put(BodyStart, "0.0.39712345678901\x01"), "8.0.0.397", "Windows Edition"},
      {"without a delimiter in a big-endian document, byte 23 decides",
       DocumentBuilder(BodyStart + 1000)
           .BigEndian()
           .Release(8)
           .Put(BodyStart, "0.0.397123456789012345\x03"),
       "8.0.0.397", "Windows Edition"},
      {"a seventh byte that is no digit is left out",
       CS6(1000).Saved(BodyStart, Windows, "0.0.45\x01"), "8.0.0.45", "Windows Edition"},
      {"a field shorter than six bytes is cut whole",
       CS6(500).Saved(BodyStart, Mac, "").Delimiter(BodyStart + 497, "0.1"), "8.0.1", "不明"},
      {"a delimiter at the very end leaves the prefix alone",
       CS6(100).EditionBefore(BodyStart + 96, Mac).Delimiter(BodyStart + 96), "8.",
       "Macintosh Edition"},
      {"of several delimiters in the block, the last counts, and the edition stands before it",
       CS6(2000)
           .Saved(BodyStart, Mac, "0.0.111x")
           .EditionBefore(BodyStart + 500, Windows)
           .Delimiter(BodyStart + 500, "0.0.222x"),
       "8.0.0.222", "Windows Edition"},
      {"an earlier block with both wins over a later one",
       CS6(3 * BlockStride)
           .Saved(BodyStart, Mac, "0.0.111x")
           .Saved(BodyStart + 2 * BlockStride, Windows, "0.0.222x"),
       "8.0.0.111", "Macintosh Edition"},
      {"a marker across the end of a block is whole in the next",
       CS6(4 * BlockStride).Saved(firstBlockEnd - 3, Windows, "0.0.333x"), "8.0.0.333",
       "Windows Edition"},
      {"a delimiter across the end of a block is whole in the next",
       CS6(4 * BlockStride)
           .Marker(firstBlockEnd - 100)
           .EditionBefore(firstBlockEnd - 2, Windows)
           .Delimiter(firstBlockEnd - 2, "0.0.333x"),
       "8.0.0.333", "Windows Edition"},
      {"marker and delimiter that share only a later block are found there",
       CS6(4 * BlockStride)
           .Delimiter(BodyStart + 10, "0.0.111x")
           .Saved(BodyStart + 3 * BlockStride - 100, Windows, "0.0.333x"),
       "8.0.0.333", "Windows Edition"},
      {"marker and delimiter too far apart for one block: the delimiter alone is found, and "
       "byte 19 of the field before it decides",
       CS6(4 * BlockStride)
           .Marker(BodyStart + 10)
           .Put(secondBlock + 18, "\x03")
           .Delimiter(secondBlock + 2048, "0.0.444x"),
       "8.0.0.444", "Windows Edition"},
      {"the delimiter alone in the last block counts as if the marker were there",
       CS6(4 * BlockStride)
           .EditionBefore(BodyStart + 4 * BlockStride - 100, Windows)
           .Delimiter(BodyStart + 4 * BlockStride - 100, "0.0.555x"),
       "8.0.0.555", "Windows Edition"},
      {"a delimiter in a block before the last is found by the second scan",
       CS6(4 * BlockStride)
           .Put(BodyStart + 18, std::string_view("\0", 1))
           .Delimiter(BodyStart + 100, "0.0.666x"),
       "8.0.0.666", "Macintosh Edition"},
      {"the edition is unknown when the field before the delimiter is too short for it",
       CS6(4 * BlockStride).Delimiter(BodyStart + 18, "0.0.777x"), "8.0.0.777", "不明"},
      {"what stands before the body is never searched",
       CS6(1000).Saved(BodyStart - 200, Mac, "0.0.888x").Put(BodyStart, "abcdefg"), "8.abcdef",
       "不明"},
      {"a pattern across the beginning of the body is none",
       CS6(1000).Delimiter(BodyStart - 1, "0.0.888x"), "8.@8.0.0", "不明"},
      {"another release's delimiter is none", CS6(1000).Put(BodyStart, "\t@9.0.0.111"),
       "8.\t@9.0.0", "不明"},
      {"a third byte of 5 makes it CS5.5, whatever the release",
       CS6(1000).Saved(BodyStart, Mac, "5.0.142x"), "8.5.0.142", "Macintosh Edition",
       "Adobe InDesign CS5.5"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.claim);
    const ReportFields report = InspectBytes(row.document.Bytes());
    EXPECT_EQ(report.buildText, row.build);
    EXPECT_EQ(report.editionText, row.edition);
    EXPECT_EQ(report.productText, row.product);
    EXPECT_EQ(report.picture, row.product == "Adobe InDesign CS6" ? "cs6" : "cs55");
    EXPECT_TRUE(report.openable);
  }
}

TEST(VersionCheck, TheEditionByteIs0ForMacintoshAnd1Or3ForWindows) {
  struct Layout {
    bool big;
    std::uint8_t version;
  };
  for (const auto& [big, version] :
       {Layout{false, 7}, Layout{false, 14}, Layout{true, 7}, Layout{true, 14}}) {
    for (int value = 0; value < 256; ++value) {
      DocumentBuilder document(BodyStart + 500);
      if (big) document.BigEndian();
      document.Release(version).Saved(BodyStart, static_cast<std::uint8_t>(value), "0.0.424");
      const std::string_view expected = value == 0                 ? "Macintosh Edition"
                                        : value == 1 || value == 3 ? "Windows Edition"
                                                                   : "不明";
      ASSERT_EQ(InspectBytes(document.Bytes()).editionText, expected) << value;
    }
  }
}

TEST(VersionCheck, ADocumentThatCannotBeReadIsNamedBeforeItIsOpened) {
  const TemporaryFolder folder;
  RecordingReport report;
  EXPECT_THROW(inspection::VersionCheck(folder.Item("missing.indd"), report), IOException);
  EXPECT_EQ(report.fields.documentName, "missing.indd");
}

TEST(VersionCheck, AFileThatShrinksBetweenHeaderAndBodyHasNoBuild) {
  const TemporaryFolder folder;
  const FolderItem item = folder.File(
      "sample.indd", DocumentBuilder(BodyStart).Release(8).Saved(BodyStart, Mac, "0.0.1").Bytes());
  RecordingReport report;
  report.betweenHeaderAndScan = [&] { std::filesystem::resize_file(item.NativePath(), BodyStart); };
  inspection::VersionCheck(item, report);
  EXPECT_EQ(report.fields.buildText, "不明");
  EXPECT_EQ(report.fields.editionText, "不明");
}

}  // namespace
}  // namespace vintrace::test
