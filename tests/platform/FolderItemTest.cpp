#include "platform/FolderItem.h"

#include <gtest/gtest.h>

namespace vintrace {
namespace {

TEST(FolderItem, NameIsTheLeafInItsOwnBytes) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"/a/b.indd", "b.indd"},
      {"/b.indd", "b.indd"},
      {"b.indd", "b.indd"},
      {"/a/b.indd//", "b.indd"},
      {"/a/\xFF\t\n.indd", "\xFF\t\n.indd"},
      {"/", ""},
      {"", ""},
  };
  for (const auto& [path, name] : cases) EXPECT_EQ(FolderItem(String(path)).Name(), name) << path;
}

TEST(FolderItem, ARelativePathBeginsAtTheFolder) {
  EXPECT_EQ(ItemRelativeTo("/home/a", "../b.indd").NativePath(), "/home/a/../b.indd");
  EXPECT_EQ(ItemRelativeTo("/", "b.indd").NativePath(), "/b.indd");
  EXPECT_EQ(ItemRelativeTo("/home/a", "/b.indd").NativePath(), "/b.indd");
  EXPECT_EQ(ItemRelativeTo("", "b.indd").NativePath(), "b.indd");
  EXPECT_EQ(ItemRelativeTo("/home/a.indd", "").Name(), "");
  EXPECT_EQ(ItemRelativeTo("/home/a", "-\xFF.indd").NativePath(), "/home/a/-\xFF.indd");
}

}  // namespace
}  // namespace vintrace
