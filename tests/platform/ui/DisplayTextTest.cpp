#include "platform/ui/qt/widgets/DisplayText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vintrace::qt {
namespace {

using namespace std::string_view_literals;

// The characters are written as escapes, so none of them affects the display of this file.
// NOLINTBEGIN(misc-misleading-bidirectional)

TEST(DisplayText, ReplacesControlsLineSeparatorsBidiMarksAndInvalidUtf8) {
  for (const std::string_view bytes :
       {"\0"sv,     "\n"sv,     "\r"sv,     "\t"sv,     "\x1B"sv,   "\x7F"sv,   "\u0085"sv,
        "\u009F"sv, "\u061C"sv, "\u200E"sv, "\u200F"sv, "\u2028"sv, "\u2029"sv, "\u202A"sv,
        "\u202E"sv, "\u2066"sv, "\u2069"sv, "\xFF"sv,   "\x80"sv,   "\xE8"sv}) {
    const std::string name = std::string("a").append(bytes).append("b");
    EXPECT_EQ(DisplayText(name).toStdString(), "a\uFFFDb") << testing::PrintToString(name);
  }
  for (const char* text : {"表紙 第2版.indd", "é ~\u00A0", "\u2027\u202F", "\u2065\u206A", "😀"}) {
    EXPECT_EQ(DisplayText(text).toStdString(), text) << "all other text stays";
  }
}

// NOLINTEND(misc-misleading-bidirectional)

}  // namespace
}  // namespace vintrace::qt
