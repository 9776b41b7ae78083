// Texts, and what is made of them when they leave the program.

#include "platform/String.h"

#include <gtest/gtest.h>

#include "platform/TextConverter.h"

namespace vintrace {
namespace {

using namespace std::string_literals;

TEST(TextEquals, FoldsAsciiLettersAndNothingElse) {
  EXPECT_TRUE(TextEquals(".INDZ", ".indz"));
  EXPECT_FALSE(TextEquals("[", "{"));  // They differ by the bit that tells the case of letters.
  EXPECT_FALSE(TextEquals("\xC3\x84", "\xC3\xA4"));
  EXPECT_FALSE(TextEquals("a", "a\0"s));
}

TEST(OneLine, ReplacesWhatWouldBreakARow) {
  EXPECT_EQ(OneLine("a\tb\nc\r\0\x7F"s), "a\uFFFDb\uFFFDc\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(OneLine("\u0080a\u009Bb\u2028c\u2029"), "\uFFFDa\uFFFDb\uFFFDc\uFFFD");
  for (const auto* kept : {"不明 \u00A0\u2027\u202F", "\xFF\xE6", "\x9B", "\xC2", "\xE2\x80"}) {
    EXPECT_EQ(OneLine(kept), kept);
  }
}

TEST(TextConverter, InvalidUtf8BecomesReplacementCharactersAndNothingElseChanges) {
  const String valid("a\0b\t\n\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF二"s);
  const std::pair<String, String> rows[] = {
      {valid, valid},
      {"\x80\xBF\xC0\xC1\xF5\xFF", "??????"},
      {"\xC0\xAF", "??"},            // Overlong.
      {"\xE0\x9F\xBF", "???"},       // Overlong.
      {"\xF0\x8F\xBF\xBF", "????"},  // Overlong.
      {"\xED\xA0\x80", "???"},       // A surrogate.
      {"\xF4\x90\x80\x80", "????"},  // Above the last character.
      {"\xE4\xBA", "?"},             // Cut short at the end,
      {"\xE4\xBA\x41", "?A"},        // and by another character.
      {"\xF1\x80\x80\xE1\x80\xC2\x62", "???b"},
  };
  const TextEncoding utf8 = GetTextEncoding(256, 0, 2);
  const TextConverter converter = GetTextConverter(utf8, utf8);
  for (const auto& [text, converted] : rows) {
    EXPECT_EQ(converter.convert(text), ReplaceAll(converted, "?", "\uFFFD"));
  }
}

}  // namespace
}  // namespace vintrace
