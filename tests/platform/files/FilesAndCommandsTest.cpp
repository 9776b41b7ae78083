// Paths, files, shell commands and user folders on the real system.

#include <gtest/gtest.h>

#include <csignal>

#include "platform/files/BinaryStream.h"
#include "platform/files/SpecialFolder.h"
#include "platform/process/Shell.h"
#include "platform/text/Exceptions.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

TEST(FolderItem, AZeroByteDoesNotTruncateThePath) {
  const TemporaryFolder folder;
  folder.File("a", "");
  const FolderItem item = folder.Item("a\0b"s);
  EXPECT_FALSE(item.Exists());
  EXPECT_THROW(BinaryStream::Open(item, false), IOException);
  EXPECT_THROW(BinaryStream::Create(item, true), IOException);
}

TEST(BinaryStream, EndsAtTheSmallerOfTheInitialAndTheCurrentFileSize) {
  const TemporaryFolder folder;
  const FolderItem file = folder.File("a.indd", "abcdef");
  BinaryStream stream = BinaryStream::Open(file, false);
  stream.SetPosition(6);
  fs::resize_file(file.NativePath(), 1'000'000);
  EXPECT_TRUE(stream.EndOfFile()) << "growth after opening does not count";
  stream.SetPosition(1);
  EXPECT_FALSE(stream.EndOfFile());
  fs::resize_file(file.NativePath(), 1);
  EXPECT_TRUE(stream.EndOfFile()) << "the file has shrunk";
}

int ErrorCodeOf(const String& command) {
  Shell shell;
  shell.Execute(command);
  return shell.ErrorCode();
}

TEST(Shell, AKilledCommandYields128PlusTheSignal) {
  EXPECT_EQ(ErrorCodeOf("kill -TERM $$"), 128 + SIGTERM);
}

TEST(Shell, AnEmptyPathFindsSystemCommandsButNoneInTheWorkingFolder) {
  const TemporaryFolder folder;
  const WorkingFolder working(folder.Path());
  fs::permissions(folder.File("here", "#!/bin/sh\n").NativePath(), fs::perms::owner_all);
  const Environment path("PATH", "");
  EXPECT_EQ(ErrorCodeOf("cat /dev/null"), 0);
  EXPECT_EQ(ErrorCodeOf("here 2>/dev/null"), 127);
}

TEST(GetFolderItem, AcceptsOnlyAbsolutePathsWithClosedQuotes) {
  EXPECT_EQ(GetFolderItem("/'a b'c d", PathMode::Shell).value().NativePath(), "/a bc d");
  for (const auto& none : {""s, "a"s, "/a\\"s, "/it's"s, "/a\0b"s}) {
    EXPECT_FALSE(GetFolderItem(none, PathMode::Shell)) << none;
  }
}

// Each byte that a path can hold, next to bytes that can change its meaning.
TEST(ShellPath, IsOneWordOfTheSameBytesInEveryShell) {
  EXPECT_EQ(FolderItem("/Adobe InDesign CS6.app/日本語_a-c+e\nb\r").ShellPath(),
            "/Adobe\\ InDesign\\ CS6.app/日本語_a-c+e'\n'b'\r'");
  const TemporaryFolder folder;
  const WorkingFolder working(folder.Path());
  String script;
  String expected;
  for (int value = 1; value < 256; ++value) {
    const char byte = static_cast<char>(value);
    for (const char beside : "a\n\\'\xE3"s) {
      const String path{'/', byte, beside, byte};
      const String form = FolderItem(path).ShellPath();
      script += "printf '%s\\0' " + form + '\n';
      expected += path + '\0';
      EXPECT_EQ(GetFolderItem(form, PathMode::Shell).value().NativePath(), path);
    }
  }
  folder.File("script", script);
  for (const String shell : {"/bin/sh", "bash", "LC_ALL=C.UTF-8 bash", "LC_ALL=C bash --posix"}) {
    EXPECT_EQ(ErrorCodeOf(shell + " script >output"), 0);
    const String output = BinaryStream::Open(folder.Item("output"), false).Read(1 << 20, nullptr);
    EXPECT_TRUE(output == expected) << shell;
  }
}

#ifdef __linux__
TEST(SpecialFolder, ApplicationDataDefaultsToAPrivateFolderInHome) {
  const TemporaryFolder folder;
  const Environment home("HOME", folder.Path().c_str());
  const String data = folder.Item(".local/share").NativePath();
  for (const char* unusable : {static_cast<const char*>(nullptr), "relative"}) {
    const Environment named("XDG_DATA_HOME", unusable);
    EXPECT_EQ(SpecialFolder::ApplicationData().value().NativePath(), data);
  }
  EXPECT_EQ(fs::status(data).permissions(), fs::perms(0700));
  const Environment file("XDG_DATA_HOME", folder.File("file", "").NativePath().c_str());
  EXPECT_FALSE(SpecialFolder::ApplicationData());
}
#endif

}  // namespace
}  // namespace vintrace::test
