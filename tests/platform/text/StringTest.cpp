// The conversion of texts for output.

#include "platform/text/String.h"

#include <gtest/gtest.h>

#include "platform/text/TextConverter.h"

namespace vintrace {
namespace {

using namespace std::string_literals;

TEST(OneLine, ReplacesControlCharactersAndLineSeparators) {
  EXPECT_EQ(OneLine("a\tb\nc\r\0\x7F"s), "a\uFFFDb\uFFFDc\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(OneLine("\u0080a\u009Bb\u2028c\u2029"), "\uFFFDa\uFFFDb\uFFFDc\uFFFD");
  for (const auto* kept : {"不明 \u00A0\u2027\u202F", "\xFF\xE6", "\x9B", "\xC2", "\xE2\x80"}) {
    EXPECT_EQ(OneLine(kept), kept);
  }
}

TEST(TextConverter, ReplacesInvalidUtf8AndKeepsValidText) {
  const TextEncoding utf8 = GetTextEncoding(256, 0, 2);
  const TextConverter converter = GetTextConverter(utf8, utf8);
  const String valid("a\0b\t\n\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF二"s);
  EXPECT_EQ(converter.convert(valid), valid);
  // Overlong forms, a surrogate, a value above U+10FFFF, and a truncated sequence.
  const String invalid = "\xC0\xAF\xE0\x9F\xBF\xF0\x8F\xBF\xBF\xED\xA0\x80\xF4\x90\x80\x80\xE4\xBA";
  EXPECT_EQ(converter.convert(invalid + 'A'), ReplaceAll(String(17, '?') + 'A', "?", "\uFFFD"));
}

}  // namespace
}  // namespace vintrace
