// Text files, and the folders of a user, on the real system.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/Exceptions.h"
#include "platform/SpecialFolder.h"
#include "platform/TextStreams.h"
#include "support/AsOrdinaryUser.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<String>;

/// The lines of a file, as one who looks for the end behind each line reads them.
Lines LinesOf(const FolderItem& file) {
  Lines lines;
  auto stream = TextInputStream::Open(file);
  do lines.push_back(stream.ReadLine());
  while (!stream.EndOfFile());
  stream.Close();
  return lines;
}

TEST(TextInputStream, ALineEndsWithItsLineEndOrWithTheFile) {
  const TemporaryFolder folder;
  const String longLine(200'000, 'x');
  const std::pair<String, Lines> cases[] = {
      {"", {""}},
      {"a\nb\n", {"a", "b"}},
      {"a\n\nb", {"a", "", "b"}},
      {"\n", {""}},
      {"a\r\nb\r\n", {"a", "b"}},
      {"a\rb\r", {"a\rb\r"}},
      {"\xFF\t \xEF\xBB\xBF\n", {"\xFF\t \xEF\xBB\xBF"}},
      {longLine + "\r\n" + longLine, {longLine, longLine}},
  };
  for (const auto& [bytes, lines] : cases) {
    EXPECT_EQ(LinesOf(folder.File("a.ini", bytes)), lines) << bytes.substr(0, 20);
  }
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

String BytesOf(const FolderItem& file) { return BinaryStream::Open(file).Read(1 << 20); }

TEST(TextOutputStream, ReplacesTheFileInItsPlaceAndOnlyWhenItIsClosed) {
  const TemporaryFolder folder;
  const FolderItem file = folder.File("a.ini", "much longer than what comes");
  fs::permissions(file.NativePath(), fs::perms(0640));
  fs::create_symlink("a.ini", folder.Path() / "link.ini");
  {
    auto stream = TextOutputStream::Create(folder.Item("link.ini"));
    stream.WriteLine("/a\\ \xFF");
    stream.Write("b");
    EXPECT_EQ(BytesOf(file), "");
    stream.Close();
    stream.Close();
  }
  EXPECT_EQ(BytesOf(file), "/a\\ \xFF\nb");
  EXPECT_EQ(fs::status(file.NativePath()).permissions(), fs::perms(0640));
  EXPECT_TRUE(fs::is_symlink(folder.Path() / "link.ini"));
}

TEST(TextStreams, WhatTheSystemRefusesRaises) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "folder");
  mkfifo((folder.Path() / "fifo").c_str(), 0600);
  fs::permissions(folder.Path() / "fifo", fs::perms::all);
  folder.File("locked", "");
  fs::permissions(folder.Path() / "locked", fs::perms::none);
  fs::permissions(folder.Path(), fs::perms::all);
  const auto create = [](const FolderItem& item) { TextOutputStream::Create(item); };
  const auto write = [](const FolderItem& item) {
    auto stream = TextOutputStream::Create(item);
    stream.WriteLine("a");
    stream.Close();
  };
  const AsOrdinaryUser user;
  EXPECT_EQ(ErrorOf([&] { create(folder.Item("folder")); }), EISDIR);
  EXPECT_EQ(ErrorOf([&] { create(folder.Item("missing/a")); }), ENOENT);
  EXPECT_EQ(ErrorOf([&] { create(folder.Item("fifo")); }), ENXIO);
  EXPECT_EQ(ErrorOf([&] { create(folder.Item("locked")); }), EACCES);
  EXPECT_EQ(ErrorOf([&] { create(FolderItem(String("/tmp/a\0b", 8))); }), ENOENT);
  EXPECT_EQ(ErrorOf([&] { write(FolderItem("/dev/full")); }), ENOSPC);
  EXPECT_EQ(ErrorOf([&] { TextInputStream::Open(folder.Item("missing")); }), ENOENT);
  EXPECT_EQ(ErrorOf([&] { TextInputStream::Open(folder.Item("folder")); }), EISDIR);
  EXPECT_THROW(TextInputStream::Open(std::nullopt), NilObjectException);
  EXPECT_THROW(TextOutputStream::Create(std::nullopt), NilObjectException);
}

TEST(FolderItem, ExistsForWhatALinkLeadsTo) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "NAME.app");
  fs::create_symlink("NAME.app", folder.Path() / "link");
  fs::create_symlink("missing", folder.Path() / "broken");
  EXPECT_TRUE(folder.Item("NAME.app").Exists());
  EXPECT_TRUE(folder.Item("link").Exists());
  EXPECT_FALSE(folder.Item("broken").Exists());
  EXPECT_FALSE(folder.Item("missing").Exists());
  EXPECT_FALSE(FolderItem(folder.Path().native() + String("\0x", 2)).Exists());
}

#ifdef __linux__
TEST(SpecialFolder, ApplicationDataIsMadeForTheUserAlone) {
  const TemporaryFolder folder;
  const Environment home("HOME", folder.Path().c_str());
  const String data = (folder.Path() / ".local/share").native();
  for (const char* unusable : {static_cast<const char*>(nullptr), "", "relative"}) {
    const Environment named("XDG_DATA_HOME", unusable);
    EXPECT_EQ(SpecialFolder::ApplicationData().value().NativePath(), data);
  }
  EXPECT_EQ(fs::status(data).permissions(), fs::perms(0700));
  const String own = (folder.Path() / "own").native();
  const Environment named("XDG_DATA_HOME", own.c_str());
  EXPECT_EQ(SpecialFolder::ApplicationData().value().NativePath(), own);
  EXPECT_TRUE(fs::is_directory(own));
  folder.File("file", "");
  const Environment file("XDG_DATA_HOME", (folder.Path() / "file").c_str());
  EXPECT_FALSE(SpecialFolder::ApplicationData());
}

TEST(SpecialFolder, ApplicationsAreWinesWhereThereAreAny) {
  const TemporaryFolder folder;
  const Environment home("HOME", folder.Path().c_str());
  const Environment none("WINEPREFIX", nullptr);
  EXPECT_EQ(SpecialFolder::Applications().NativePath(), "/usr/share/applications");
  const auto programs = folder.Path() / ".wine/drive_c/Program Files";
  fs::create_directories(programs);
  EXPECT_EQ(SpecialFolder::Applications().NativePath(), programs.native());
  const auto others = folder.Path() / "prefix/drive_c/Program Files";
  fs::create_directories(others);
  const Environment prefix("WINEPREFIX", (folder.Path() / "prefix").c_str());
  EXPECT_EQ(SpecialFolder::Applications().NativePath(), others.native());
}
#endif

}  // namespace
}  // namespace vintrace::test
