// Paths, files as bytes and as text, commands, and the folders of a user, on the real system.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <limits>
#include <tuple>

#include "platform/Exceptions.h"
#include "platform/Shell.h"
#include "platform/SpecialFolder.h"
#include "platform/TextStreams.h"
#include "support/AsOrdinaryUser.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

TEST(FolderItem, HasItsLeafAsItsNameAndBeginsAtTheFolderWhenItIsRelative) {
  EXPECT_EQ(FolderItem("/a/b.indd").Name(), "b.indd");
  EXPECT_EQ(FolderItem("/a/\xFF\n.indd//").Name(), "\xFF\n.indd");
  EXPECT_EQ(FolderItem("b.indd").Name(), "b.indd");
  EXPECT_EQ(FolderItem("/").Name(), "");
  EXPECT_EQ(ItemRelativeTo("/", "b").NativePath(), "/b");
  EXPECT_EQ(ItemRelativeTo("", "b").NativePath(), "b");
  EXPECT_EQ(ItemRelativeTo("/home/a.indd", "").NativePath(), "");
}

TEST(GetFolderItem, TakesAbsolutePathsAndFinishedQuotations) {
  const std::pair<String, String> words[] = {
      {"/a\\ b", "/a b"}, {"/a b", "/a b"}, {"/'a b'c", "/a bc"}, {"\\/a", "/a"}, {"/\\\\", "/\\"}};
  for (const auto& [word, path] : words) {
    EXPECT_EQ(GetFolderItem(word, PathMode::Shell).value().NativePath(), path);
  }
  for (const auto& none : {""s, "a"s, "/a\\"s, "/it's"s, "/a\0b"s}) {
    EXPECT_FALSE(GetFolderItem(none, PathMode::Shell)) << none;
  }
  EXPECT_EQ(GetFolderItem("/it's\\", PathMode::Native).value().NativePath(), "/it's\\");
}

TEST(BinaryStream, ReadsFromPositionToTheEndThatTheFileHadOrHasNow) {
  const TemporaryFolder folder;
  const FolderItem file = folder.File("\xFF\n", "ab\0def"s);
  BinaryStream stream = BinaryStream::Open(file);
  EXPECT_EQ(stream.Read(3), "ab\0"s);
  EXPECT_FALSE(stream.AtEOF());
  EXPECT_EQ(stream.Read(100), "def");
  EXPECT_TRUE(stream.AtEOF());
  fs::resize_file(file.NativePath(), 1'000'000);
  EXPECT_TRUE(stream.AtEOF()) << "one that grows has an end";
  stream.SetPosition(1);
  EXPECT_FALSE(stream.AtEOF());
  EXPECT_EQ(stream.Read(1), "b");
  fs::resize_file(file.NativePath(), 1);
  EXPECT_TRUE(stream.AtEOF()) << "it has shrunk";
  EXPECT_EQ(stream.Read(1), "");
  stream.SetPosition(std::numeric_limits<std::uint64_t>::max());
  EXPECT_THROW(stream.Read(1), IOException);
}

// The lines as one reads them who looks for the end behind each.
TEST(TextInputStream, ALineEndsWithItsLineEndOrWithTheFile) {
  const TemporaryFolder folder;
  const String longLine(200'000, 'x');
  const std::pair<String, std::vector<String>> rows[] = {
      {"a\r\nb\r\n", {"a", "b"}},
      {"a\rb\r", {"a\rb\r"}},
      {"\xFF\t \xEF\xBB\xBF\n", {"\xFF\t \xEF\xBB\xBF"}},
      {longLine + "\r\n" + longLine, {longLine, longLine}},
  };
  for (const auto& [bytes, expected] : rows) {
    auto stream = TextInputStream::Open(folder.File("a.ini", bytes));
    std::vector<String> lines;
    do lines.push_back(stream.ReadLine());
    while (!stream.EndOfFile());
    EXPECT_EQ(lines, expected);
  }
}

String BytesOf(const FolderItem& file) { return BinaryStream::Open(file).Read(1 << 20); }

TEST(TextOutputStream, ReplacesTheFileInItsPlaceAndOnlyWhenItIsClosed) {
  const TemporaryFolder folder;
  const FolderItem file = folder.File("a.ini", "much longer than what comes");
  fs::permissions(file.NativePath(), fs::perms(0640));
  fs::create_symlink("a.ini", folder.Path() / "link.ini");
  auto stream = TextOutputStream::Create(folder.Item("link.ini"));
  stream.WriteLine("/a\\ \xFF");
  stream.Write("b");
  EXPECT_EQ(BytesOf(file), "");
  stream.Close();
  stream.Close();
  EXPECT_EQ(BytesOf(file), "/a\\ \xFF\nb");
  EXPECT_EQ(fs::status(file.NativePath()).permissions(), fs::perms(0640));
  EXPECT_TRUE(fs::is_symlink(folder.Path() / "link.ini"));
}

/// The number of the error that `operation` raises; 0 when it raises none.
template <class Operation>
int ErrorOf(Operation operation) {
  try {
    operation();
  } catch (const IOException& exception) {
    return exception.ErrorNumber();
  }
  return 0;
}

void Write(const FolderItem& item) {
  auto stream = TextOutputStream::Create(item);
  stream.Write("a");
  stream.Close();
}

TEST(Files, WhatTheSystemRefusesRaisesAndNothingIsWaitedFor) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "folder");
  mkfifo((folder.Path() / "fifo").c_str(), 0600);
  folder.File("a", "");
  folder.File("locked", "");
  for (const auto* name : {"", "fifo"}) fs::permissions(folder.Path() / name, fs::perms::all);
  fs::permissions(folder.Path() / "locked", fs::perms::none);
  const FolderItem zero = folder.Item("a\0b"s);
  const std::tuple<FolderItem, int, int> rows[] = {
      {zero, ENOENT, ENOENT},
      {folder.Item("folder"), EISDIR, EISDIR},
      {folder.Item("fifo"), EINVAL, ENXIO},
      {folder.Item("locked"), EACCES, EACCES},
      {FolderItem("/dev/full"), EINVAL, ENOSPC},
  };
  const AsOrdinaryUser user;
  for (const auto& [item, ofReading, ofWriting] : rows) {
    EXPECT_EQ(ErrorOf([&item = item] { BinaryStream::Open(item); }), ofReading);
    EXPECT_EQ(ErrorOf([&item = item] { Write(item); }), ofWriting);
  }
  EXPECT_FALSE(zero.Exists());
  EXPECT_THROW(TextInputStream::Open(std::nullopt), NilObjectException);
}

int ErrorCodeOf(const String& command) {
  Shell shell;
  shell.Execute(command);
  return shell.ErrorCode();
}

TEST(Shell, TellsHowTheCommandEnded) {
  EXPECT_EQ(ErrorCodeOf("exit 7"), 7);
  EXPECT_EQ(ErrorCodeOf("kill -TERM $$"), 128 + SIGTERM);
  EXPECT_EQ(ErrorCodeOf("read line"), 1) << "there is nothing to be read";
  EXPECT_EQ(ErrorCodeOf("test /dev/fd/1 -ef /dev/null"), 0) << "nothing is printed";
}

TEST(Shell, WithoutASearchPathCommandsAreStillFoundAndNoneInTheWorkingFolder) {
  const TemporaryFolder folder;
  const WorkingFolder working(folder.Path());
  fs::permissions(folder.File("here", "#!/bin/sh\n").NativePath(), fs::perms::owner_all);
  for (const char* unset : {static_cast<const char*>(nullptr), ""}) {
    const Environment path("PATH", unset);
    EXPECT_EQ(ErrorCodeOf("cat /dev/null"), 0);
    EXPECT_EQ(ErrorCodeOf("here 2>/dev/null"), 127);
  }
}

// Every byte that a path can hold stands beside those that change what the next one means.
TEST(ShellPath, LooksAsInAShellAndIsOneWordOfTheSameBytesInEvery) {
  EXPECT_EQ(FolderItem("/Adobe InDesign CS6.app/日本語_a-c+e\nb\r").ShellPath(),
            "/Adobe\\ InDesign\\ CS6.app/日本語_a-c+e'\n'b'\r'");
  std::vector<String> paths{"/$(touch ran)", "/\ntouch ran\n", "/'\"\\ *?[a]{b,c}~#!&|<>()$HOME"};
  for (int value = 1; value < 256; ++value) {
    const char byte = static_cast<char>(value);
    for (const char beside : "a\n\\'\xE3"s) paths.push_back({'/', byte, beside, byte});
  }
  const TemporaryFolder folder;
  const WorkingFolder working(folder.Path());
  String script;
  String expected;
  for (const auto& path : paths) {
    const String form = FolderItem(path).ShellPath();
    script += "printf '%s\\0' " + form + '\n';
    expected += path + '\0';
    EXPECT_EQ(GetFolderItem(form, PathMode::Shell).value().NativePath(), path);
  }
  folder.File("script", script);
  for (const String shell : {"/bin/sh", "bash", "LC_ALL=C.UTF-8 bash", "LC_ALL=C bash --posix"}) {
    EXPECT_EQ(ErrorCodeOf(shell + " script >output"), 0);
    EXPECT_TRUE(BytesOf(folder.Item("output")) == expected) << shell;
  }
  EXPECT_FALSE(fs::exists("ran"));
}

#ifdef __linux__
TEST(SpecialFolder, IsThatOfTheEnvironmentOrOneThatIsMadeForTheUserAlone) {
  const TemporaryFolder folder;
  const Environment home("HOME", folder.Path().c_str());
  const Environment none("WINEPREFIX", nullptr);
  const String data = folder.Item(".local/share").NativePath();
  for (const char* unusable : {static_cast<const char*>(nullptr), "", "relative"}) {
    const Environment named("XDG_DATA_HOME", unusable);
    EXPECT_EQ(SpecialFolder::ApplicationData().value().NativePath(), data);
  }
  EXPECT_EQ(fs::status(data).permissions(), fs::perms(0700));
  const Environment own("XDG_DATA_HOME", (folder.Path() / "own").c_str());
  EXPECT_EQ(SpecialFolder::ApplicationData().value().NativePath(), folder.Item("own").NativePath());
  const Environment file("XDG_DATA_HOME", folder.File("file", "").NativePath().c_str());
  EXPECT_FALSE(SpecialFolder::ApplicationData());
  EXPECT_EQ(SpecialFolder::Applications().NativePath(), "/usr/share/applications");
}
#endif

}  // namespace
}  // namespace vintrace::test
