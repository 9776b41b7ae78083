#include "platform/BinaryStream.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <limits>

#include "platform/Exceptions.h"
#include "support/AsOrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

/// The error with which `item` doesn't open; 0 when it opens.
int OpenError(const FolderItem& item) {
  try {
    BinaryStream::Open(item);
  } catch (const IOException& exception) {
    EXPECT_STRNE(exception.what(), "");
    return exception.ErrorNumber();
  }
  return 0;
}

TEST(BinaryStream, ReadsFromPositionUpToTheEnd) {
  const TemporaryFolder folder;
  BinaryStream stream = BinaryStream::Open(folder.File("a", std::string("ab\0def", 6)));
  EXPECT_EQ(stream.Read(3), std::string("ab\0", 3));
  EXPECT_FALSE(stream.AtEOF());
  EXPECT_EQ(stream.Read(100), "def");
  EXPECT_TRUE(stream.AtEOF());
  EXPECT_EQ(stream.Position(), 6U);
  stream.SetPosition(1);
  EXPECT_FALSE(stream.AtEOF());
  EXPECT_EQ(stream.Read(1), "b");
  stream.SetPosition(100);
  EXPECT_EQ(stream.Read(1), "");
  EXPECT_TRUE(stream.AtEOF());
}

TEST(BinaryStream, APositionThatNoFileReachesIsAnErrorOfTheRead) {
  const TemporaryFolder folder;
  BinaryStream stream = BinaryStream::Open(folder.File("a", "abc"));
  stream.SetPosition(std::numeric_limits<std::uint64_t>::max());
  EXPECT_THROW(stream.Read(1), IOException);
}

TEST(BinaryStream, AFileThatShrinksEndsWhereItEndsNow) {
  const TemporaryFolder folder;
  const FolderItem item = folder.File("a", "abcdef");
  BinaryStream stream = BinaryStream::Open(item);
  stream.Read(3);
  fs::resize_file(item.NativePath(), 2);
  EXPECT_EQ(stream.Read(3), "");
  EXPECT_TRUE(stream.AtEOF());
}

TEST(BinaryStream, AFileThatGrowsEndsWhereItEndedWhenItWasOpened) {
  const TemporaryFolder folder;
  const FolderItem item = folder.File("a", "abc");
  BinaryStream stream = BinaryStream::Open(item);
  fs::resize_file(item.NativePath(), 1'000'000);
  stream.Read(2);
  EXPECT_FALSE(stream.AtEOF());
  stream.Read(1);
  EXPECT_TRUE(stream.AtEOF());
}

TEST(BinaryStream, OpensNothingButARegularFileAndNeverWaits) {
  const TemporaryFolder folder;
  fs::create_directory(folder.Path() / "folder.indd");
  ASSERT_EQ(mkfifo((folder.Path() / "fifo.indd").c_str(), 0600), 0);
  fs::create_symlink("nowhere", folder.Path() / "dangling.indd");
  fs::create_symlink("loop.indd", folder.Path() / "loop.indd");
  fs::create_symlink("/dev/zero", folder.Path() / "device.indd");
  EXPECT_EQ(OpenError(folder.Item("folder.indd")), EISDIR);
  EXPECT_EQ(OpenError(folder.Item("fifo.indd")), EINVAL);
  EXPECT_EQ(OpenError(folder.Item("dangling.indd")), ENOENT);
  EXPECT_EQ(OpenError(folder.Item("loop.indd")), ELOOP);
  EXPECT_EQ(OpenError(folder.Item("device.indd")), EINVAL);
  EXPECT_EQ(OpenError(folder.Item(std::string(300, 'a') + ".indd")), ENAMETOOLONG);
  EXPECT_THROW(BinaryStream::Open(std::nullopt), NilObjectException);
}

TEST(BinaryStream, ASocketDoesNotOpen) {
  const TemporaryFolder folder;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const FolderItem item = folder.Item("s.indd");
  ASSERT_LT(item.NativePath().size(), sizeof address.sun_path);
  item.NativePath().copy(address.sun_path, sizeof address.sun_path - 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_NE(OpenError(item), 0);
  close(descriptor);
}

TEST(BinaryStream, AFileThatTheUserMayNotReadDoesNotOpen) {
  const TemporaryFolder folder;
  const FolderItem item = folder.File("a.indd", "abc");
  fs::permissions(folder.Path(), fs::perms::all);
  fs::permissions(item.NativePath(), fs::perms::none);
  const AsOrdinaryUser user;
  EXPECT_EQ(OpenError(item), EACCES);
}

TEST(BinaryStream, TakesNamesOfAnyBytesAndNeverOnesCutShort) {
  const TemporaryFolder folder;
  EXPECT_EQ(OpenError(folder.File("\xFF\t\n .indd", "abc")), 0);
  folder.File("a", "abc");
  EXPECT_EQ(OpenError(folder.Item(std::string_view("a\0.indd", 7))), ENOENT);
}

}  // namespace
}  // namespace vintrace::test
