// Commands, and the words that are handed to them, through the system's own shells.

#include "platform/Shell.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>

#include "platform/BinaryStream.h"
#include "platform/FolderItem.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

String Contents(const FolderItem& file) { return BinaryStream::Open(file).Read(16 << 20); }

int ErrorCodeOf(const String& command) {
  Shell shell;
  shell.Execute(command);
  return shell.ErrorCode();
}

TEST(Shell, TellsHowTheCommandEnded) {
  EXPECT_EQ(ErrorCodeOf("true"), 0);
  EXPECT_EQ(ErrorCodeOf("exit 7"), 7);
  EXPECT_EQ(ErrorCodeOf("/missing/command 2>/dev/null"), 127);
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

TEST(Shell, TheCommandDoesNotInheritWhatTheProgramIgnores) {
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_EQ(ErrorCodeOf("kill -PIPE $$"), 128 + SIGPIPE);
  static_cast<void>(std::signal(SIGPIPE, before));
}

TEST(Shell, WaitsForTheCommandAndNotForWhatItLeavesBehind) {
  const TemporaryFolder folder;
  const auto begin = std::chrono::steady_clock::now();
  const String pid = folder.Item("pid").ShellPath();
  EXPECT_EQ(ErrorCodeOf("sleep 60 & echo $! >" + pid), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
  EXPECT_EQ(ErrorCodeOf("kill $(cat " + pid + ')'), 0) << "it still runs";
}

/// Every byte that a path can hold, alone and in pairs, and words of random ones.
std::vector<String> HostilePaths() {
  std::vector<String> paths{"/; touch ran",
                            "/$(touch ran)",
                            "/`touch ran`",
                            "/a\ntouch ran\n",
                            "/'\"\\ *?[a]{b,c}~#!&|<>()$HOME",
                            "/-n",
                            "/  ",
                            "/\t\r"};
  for (int a = 1; a < 256; ++a) {
    for (int b : {a, 1 + a * 7 % 255, int{'\n'}, int{'\\'}, int{'\''}}) {
      paths.push_back({'/', static_cast<char>(a), static_cast<char>(b)});
    }
  }
  std::minstd_rand random;
  for (int i = 0; i < 3000; ++i) {
    String path = "/";
    for (auto length = random() % 40; length > 0; --length) {
      path += static_cast<char>(1 + random() % 255);
    }
    paths.push_back(path);
  }
  return paths;
}

class ShellForm : public testing::TestWithParam<const char*> {};

TEST_P(ShellForm, IsOneWordOfTheSameBytesAndRunsNothing) {
  const TemporaryFolder folder;
  const auto paths = HostilePaths();
  String script = "cd " + FolderItem(folder.Path().native()).ShellPath() + '\n';
  String expected;
  for (const auto& path : paths) {
    const String form = FolderItem(path).ShellPath();
    script += "printf '%s\\0' " + form + '\n';
    expected += path + '\0';
    const auto back = GetFolderItem(form, PathMode::Shell);
    ASSERT_TRUE(back) << path;
    EXPECT_EQ(back->NativePath(), path);
  }
  const FolderItem file = folder.File("script", script);
  const FolderItem output = folder.Item("output");
  EXPECT_EQ(ErrorCodeOf(String(GetParam()) + ' ' + file.ShellPath() + " >" + output.ShellPath()),
            0);
  EXPECT_TRUE(Contents(output) == expected);
  EXPECT_FALSE(fs::exists(folder.Path() / "ran"));
}

INSTANTIATE_TEST_SUITE_P(ThroughShells, ShellForm,
                         testing::Values("/bin/sh", "bash", "LC_ALL=C.UTF-8 bash",
                                         "LC_ALL=C bash --posix"));

TEST(ShellForm, LooksAsInAShell) {
  EXPECT_EQ(FolderItem("/Applications/Adobe InDesign CS6.app").ShellPath(),
            "/Applications/Adobe\\ InDesign\\ CS6.app");
  EXPECT_EQ(FolderItem("/日本語/a_b-c.d+e").ShellPath(), "/日本語/a_b-c.d+e");
  EXPECT_EQ(FolderItem("/a\nb\r").ShellPath(), "/a'\n'b'\r'");
}

TEST(GetFolderItem, TakesAbsolutePathsAndFinishedQuotations) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"/a\\ b", "/a b"}, {"/a b", "/a b"}, {"/'a b'c", "/a bc"}, {"\\/a", "/a"}, {"/\\\\", "/\\"},
  };
  for (const auto& [form, path] : cases) {
    EXPECT_EQ(GetFolderItem(form, PathMode::Shell).value().NativePath(), path);
  }
  for (const std::string_view none :
       {std::string_view(), std::string_view("a"), std::string_view("/a\\"),
        std::string_view("/it's"), std::string_view("/a\0b", 4)}) {
    EXPECT_FALSE(GetFolderItem(none, PathMode::Shell)) << none;
  }
  EXPECT_EQ(GetFolderItem("/it's\\", PathMode::Native).value().NativePath(), "/it's\\");
}

}  // namespace
}  // namespace vintrace::test
