#include "platform/TextConverter.h"

#include <gtest/gtest.h>

#include "platform/Exceptions.h"

namespace vintrace::test {
namespace {

constexpr std::string_view One = "\uFFFD";

struct Row {
  std::string_view text;
  std::string converted;
};

TEST(TextConverter, InvalidUtf8BecomesReplacementCharactersAndNothingElseChanges) {
  const auto times = [](int count) {
    String text;
    while (count-- > 0) text += One;
    return text;
  };
  using namespace std::literals;
  const Row rows[] = {
      {"a\0b\t\n\x7F"sv, "a\0b\t\n\x7F"s},
      {"\u0080\u07FF\u0800\uFFFD\uFFFF\U00010000\U0010FFFF二",
       "\u0080\u07FF\u0800\uFFFD\uFFFF\U00010000\U0010FFFF二"},
      {"\x80\xBF\xC0\xC1\xF5\xFF"sv, times(6)},
      {"\xC0\xAF"sv, times(2)},            // Overlong.
      {"\xE0\x9F\xBF"sv, times(3)},        // Overlong.
      {"\xED\xA0\x80"sv, times(3)},        // A surrogate.
      {"\xF4\x90\x80\x80"sv, times(4)},    // Above the last character.
      {"\xE4\xBA"sv, times(1)},            // Cut short at the end,
      {"\xE4\xBA\x41"sv, times(1) + "A"},  // and by another character.
      {"\xF1\x80\x80\xE1\x80\xC2\x62"sv, times(3) + "b"},
  };
  const TextEncoding utf8 = GetTextEncoding(256, 0, 2);
  const TextConverter converter = GetTextConverter(utf8, utf8);
  for (const auto& [text, converted] : rows) EXPECT_EQ(converter.convert(text), converted);
}

TEST(TextConverter, ThereIsNoneForOtherEncodings) {
  const TextEncoding utf8 = GetTextEncoding(256, 0, 2);
  EXPECT_THROW(GetTextConverter(utf8, GetTextEncoding(256, 0, 0)), RuntimeException);
  EXPECT_THROW(GetTextConverter(GetTextEncoding(1, 0, 2), utf8), RuntimeException);
}

}  // namespace
}  // namespace vintrace::test
