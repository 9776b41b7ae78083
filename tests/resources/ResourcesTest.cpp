#include <gtest/gtest.h>

#include "resources/Pictures.h"

namespace vintrace {
namespace {

TEST(Pictures, EachExistsAtItsSizeAndAtTwiceItsSize) {
  using namespace pictures;
  using namespace std::string_view_literals;
  for (const auto accessor : {cs, cs2, cs3, cs4, cs5, cs55, cs6, cc, cc2014, cc2015, cc2017, cc2018,
                              cc2019, und, splash, icon48}) {
    const auto picture = accessor();
    const bool large = accessor == splash;
    EXPECT_EQ(picture->Png().substr(16, 8),
              large ? "\0\0\1\xCC\0\0\1\x2C"sv : "\0\0\0\x30\0\0\0\x30"sv);
    EXPECT_EQ(picture->PngAt2x().substr(16, 8),
              large ? "\0\0\3\x98\0\0\2\x58"sv : "\0\0\0\x60\0\0\0\x60"sv);
  }
}

}  // namespace
}  // namespace vintrace
