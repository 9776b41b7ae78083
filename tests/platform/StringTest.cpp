#include "platform/String.h"

#include <gtest/gtest.h>

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

TEST(OneLine, ReplacesWhatWouldBreakARow) {
  EXPECT_EQ(OneLine("a\tb\nc\r\0\x7F"s), "a\uFFFDb\uFFFDc\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(OneLine("不明 \xFF\xE6"), "不明 \xFF\xE6");
}

}  // namespace
}  // namespace vintrace
