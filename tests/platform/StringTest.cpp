#include "platform/String.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vintrace {
namespace {

using namespace std::string_literals;

TEST(TextEquals, FoldsAsciiLettersAndNothingElse) {
  EXPECT_TRUE(TextEquals(".INDD", ".indd"));
  EXPECT_FALSE(TextEquals("[", "{"));  // They differ by the bit that tells the case of letters.
  EXPECT_FALSE(TextEquals("\xC3\x84", "\xC3\xA4"));
  EXPECT_FALSE(TextEquals("a", "a "));
  EXPECT_FALSE(TextEquals("a\0b"s, "a\0c"s));
  EXPECT_FALSE(TextEquals("", "\0"s));
}

TEST(InStr, FindsWithoutRegardToCaseFromAPositionOn) {
  constexpr std::string_view Path = "/Adobe InDesign CS5.5/Adobe InDesign CS5";
  const std::tuple<int, std::string_view, int> cases[] = {
      {0, "adobe indesign cs5", 2},
      {1, "ADOBE", 2},
      {2, "Adobe", 2},
      {3, "Adobe", 23},
      {0, "CS6", 0},
      {24, "Adobe", 0},
      {41, "5", 0},
      {99, "5", 0},
      {0, "", 1},
      {0, "5", 19},
      {-7, "/", 1},
  };
  for (const auto& [start, find, position] : cases) {
    EXPECT_EQ(InStr(start, Path, find), position) << start << ' ' << find;
  }
  EXPECT_EQ(InStr(0, "", "a"), 0);
}

TEST(ReplaceAll, ReplacesEveryOccurrenceAndNothingThatItPutIn) {
  EXPECT_EQ(ReplaceAll("/a\\ b\\\\c\\", "\\", ""), "/a bc");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "ab"), "aba");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("abc", "d", "x"), "abc");
  EXPECT_EQ(ReplaceAll("", "d", "x"), "");
}

TEST(OneLine, ReplacesWhatWouldBreakARow) {
  EXPECT_EQ(OneLine("a\tb\nc\r\0\x7F"s), "a\uFFFDb\uFFFDc\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(OneLine("\u0080a\u009Bb\u2028c\u2029"), "\uFFFDa\uFFFDb\uFFFDc\uFFFD");
  for (const auto* kept : {"不明 \u00A0\u2027\u202F", "\xFF\xE6", "\x9B", "\xC2", "\xE2\x80"}) {
    EXPECT_EQ(OneLine(kept), kept);
  }
}

}  // namespace
}  // namespace vintrace
