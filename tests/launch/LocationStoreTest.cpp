#include "launch/LocationStore.h"

#include <gtest/gtest.h>

#include "platform/BinaryStream.h"
#include "platform/Exceptions.h"
#include "support/TemporaryFolder.h"

namespace vintrace::launch {
namespace {

using Lines = std::vector<String>;

String BytesOf(const FolderItem& file) { return BinaryStream::Open(file).Read(1 << 20); }

TEST(LocationStore, LoadsEveryLineAndWritesEachWithALineEnd) {
  const struct {
    String bytes;
    Lines lines;
    String rewritten;
  } cases[] = {
      {"", {""}, "\n"},
      {"/A\\ 1.app\n/B.app\n", {"/A\\ 1.app", "/B.app"}, "/A\\ 1.app\n/B.app\n"},
      {"/A.app\n/B.app", {"/A.app", "/B.app"}, "/A.app\n/B.app\n"},
      {"/A.app\n\n/B.app\n", {"/A.app", "", "/B.app"}, "/A.app\n\n/B.app\n"},
      {"\n/A.app\n", {"", "/A.app"}, "\n/A.app\n"},
      {"/A.app\n/A.app\n", {"/A.app", "/A.app"}, "/A.app\n/A.app\n"},
      {"; rm -rf\xFF\n\\\n", {"; rm -rf\xFF", "\\"}, "; rm -rf\xFF\n\\\n"},
  };
  const test::TemporaryFolder folder;
  for (const auto& [bytes, lines, rewritten] : cases) {
    const FolderItem file = folder.File("VNTR.ini", bytes);
    EXPECT_EQ(LoadLocations(file), lines) << bytes;
    EXPECT_EQ(BytesOf(file), bytes) << "loading changes nothing";
    RewriteLocations(file, lines);
    EXPECT_EQ(BytesOf(file), rewritten);
  }
}

TEST(LocationStore, AFileThatIsMissingIsMadeEmptyAndAnEmptyStoreIsAnEmptyFile) {
  const test::TemporaryFolder folder;
  const FolderItem file = folder.Item("VNTR.ini");
  EXPECT_EQ(LoadLocations(file), Lines{});
  EXPECT_EQ(BytesOf(file), "");
  RewriteLocations(file, {"/A.app"});
  RewriteLocations(file, {});
  EXPECT_EQ(BytesOf(file), "");
  std::filesystem::remove(file.NativePath());
  RewriteLocations(file, {"/A.app"});
  EXPECT_EQ(BytesOf(file), "/A.app\n");
}

TEST(LocationStore, TheFirstThatHasTheProductInItsPathIsFound) {
  const Lines store{"",
                    "Adobe InDesign",
                    "/Adobe\\ InDesign\\ CS5.5/A.app",
                    "/Adobe\\ InDesign\\ CS5/A.app",
                    "/a\\ d\\o\\be\\ indesign/x",
                    "/opt/ADOBE\\ INDESIGN\\ cc\\ 2019/a.exe",
                    "/Adobe\\ InDesign\\ CC/A.app",
                    "/Adobe InDesign 2.0\\"};
  const std::pair<std::string_view, std::optional<std::int64_t>> cases[] = {
      {"Adobe InDesign CS5", 2},
      {"Adobe InDesign CS5.5", 2},
      {"Adobe InDesign CS", 2},
      {"Adobe InDesign CC", 5},
      {"Adobe InDesign CC 2019", 5},
      {"Adobe InDesign 2.0", 7},
      {"Adobe InDesign CS6", std::nullopt},
  };
  for (const auto& [product, index] : cases)
    EXPECT_EQ(FindLocation(store, product), index) << product;
  EXPECT_EQ(FindLocation({}, "Adobe InDesign CS"), std::nullopt);
  const Lines reversed{store[3], store[2]};
  EXPECT_EQ(FindLocation(reversed, "Adobe InDesign CS5"), 0);
}

TEST(LocationStore, AChangeIsInTheListAndInTheFileEvenWhereTheFileCannotHaveIt) {
  const test::TemporaryFolder folder;
  const FolderItem file = folder.Item("VNTR.ini");
  Lines store{"/A", "", "/C"};
  AddLocation(file, store, "/A");
  EXPECT_EQ(BytesOf(file), "/A\n\n/C\n/A\n");
  RemoveLocation(file, store, 1);
  EXPECT_EQ(BytesOf(file), "/A\n/C\n/A\n");
  EXPECT_THROW(AddLocation(folder.Item("missing/VNTR.ini"), store, "/D"), IOException);
  EXPECT_THROW(RemoveLocation(std::nullopt, store, 0), NilObjectException);
  EXPECT_EQ(store, (Lines{"/C", "/A", "/D"}));
}

}  // namespace
}  // namespace vintrace::launch
