#include "launch/LocationStore.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "launch/RegistApp.h"
#include "platform/files/BinaryStream.h"
#include "platform/text/Exceptions.h"
#include "support/ScriptedHost.h"
#include "support/TemporaryFolder.h"

namespace vintrace::launch {
namespace {

using Lines = std::vector<String>;

class LocationStoreTest : public testing::Test {
 protected:
  String Bytes() const { return BinaryStream::Open(file, false).Read(1 << 20, nullptr); }

  Lines Loaded() const {
    Lines lines;
    LoadLocations(file, lines);
    return lines;
  }

  const test::TemporaryFolder folder;
  const FolderItem file = folder.Item("VNTR.ini");
};

TEST_F(LocationStoreTest, LoadsEveryLineAndWritesEachWithALineEnd) {
  EXPECT_EQ(Loaded(), Lines{});
  EXPECT_EQ(Bytes(), "") << "a missing file is created";
  const String longLine(200'000, 'x');
  const std::pair<String, Lines> cases[] = {
      {"", {""}},
      {"\n/A\\ 1.app\n\n/B.app", {"", "/A\\ 1.app", "", "/B.app"}},
      {"; rm -rf\xFF\n/A\n/A\n\\\n", {"; rm -rf\xFF", "/A", "/A", "\\"}},
      {longLine + "\n/A\n" + longLine, {longLine, "/A", longLine}},
  };
  for (const auto& [bytes, lines] : cases) {
    folder.File("VNTR.ini", bytes);
    EXPECT_EQ(Loaded(), lines);
    EXPECT_EQ(Bytes(), bytes) << "loading does not change the file";
    RewriteLocations(file, lines);
    EXPECT_EQ(Bytes(), bytes.ends_with('\n') ? bytes : bytes + '\n');
  }
  folder.File("VNTR.ini", "a\rb\r\n");
  EXPECT_EQ(Loaded(), Lines{"a\rb"});
}

TEST_F(LocationStoreTest, FindsTheFirstPathThatContainsTheProductName) {
  const Lines store{"", "Adobe InDesign", "/Adobe\\ InDesign\\ CS5.5/A.app", "/Adobe InDesign CS5",
                    "/opt/a\\dobe\\ INDESIGN\\ cc\\ 2019/a.exe"};
  EXPECT_EQ(FindLocation(store, "Adobe InDesign CS5"), 2);
  EXPECT_EQ(FindLocation(store, "Adobe InDesign CC"), 4);
  EXPECT_EQ(FindLocation(store, "Adobe InDesign CS6"), std::nullopt);
}

TEST_F(LocationStoreTest, AChangeStaysInTheListEvenIfTheFileCannotBeWritten) {
  std::filesystem::create_symlink("kept elsewhere", file.NativePath());
  Lines store{"/A", "", "/C"};
  test::ScriptedHost host;
  host.choices = {FolderItem("/A"), FolderItem("/D")};
  String chosen;
  EXPECT_TRUE(RegistApp("", file, store, chosen));
  EXPECT_EQ(Bytes(), "/A\n\n/C\n/A\n");
  DeleteApp(file, store, 1);
  EXPECT_EQ(Bytes(), "/A\n/C\n/A\n");
  EXPECT_TRUE(std::filesystem::is_symlink(file.NativePath()));
  EXPECT_THROW(RegistApp("", folder.Item("missing/VNTR.ini"), store, chosen), IOException);
  EXPECT_EQ(chosen, "/D");
  EXPECT_THROW(DeleteApp(std::nullopt, store, 0), NilObjectException);
  EXPECT_EQ(store, (Lines{"/C", "/A", "/D"}));
  mkfifo(folder.Item("fifo").NativePath().c_str(), S_IRWXU);
  EXPECT_THROW(RewriteLocations(folder.Item("fifo"), store), IOException) << "no reader";
}

TEST_F(LocationStoreTest, AnApplicationWithALineFeedIsUsedAndNotWritten) {
  test::ScriptedHost host;
  host.choices = {FolderItem("/CS6\n/B")};
  Lines store{"/A"};
  String chosen;
  EXPECT_TRUE(RegistApp("CS6", file, store, chosen));
  EXPECT_EQ(FindLocation(store, "CS6"), 1);
  EXPECT_EQ(GetFolderItem(chosen, PathMode::Shell).value().NativePath(), "/CS6\n/B");
  EXPECT_EQ(Loaded(), Lines{"/A"});
}

}  // namespace
}  // namespace vintrace::launch
