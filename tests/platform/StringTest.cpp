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
  EXPECT_EQ(OneLine("\u0080a\u009Bb\u2028c\u2029"), "\uFFFDa\uFFFDb\uFFFDc\uFFFD");
  for (const auto* kept : {"不明 \u00A0\u2027\u202F", "\xFF\xE6", "\x9B", "\xC2", "\xE2\x80"}) {
    EXPECT_EQ(OneLine(kept), kept);
  }
}

}  // namespace
}  // namespace vintrace
