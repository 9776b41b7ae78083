#include "inspection/ByteString.h"

#include <gtest/gtest.h>

#include <limits>

namespace vintrace::inspection {
namespace {

TEST(ByteString, CutsWhatIsThereAndNoMore) {
  constexpr auto Lowest = std::numeric_limits<std::int64_t>::min();
  constexpr auto Highest = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(LeftB("abc", Highest), "abc");
  EXPECT_EQ(RightB("abc", -1), "");
  for (const std::int64_t outside : {Lowest, std::int64_t{0}, std::int64_t{4}, Highest}) {
    EXPECT_EQ(MidB("abc", outside, 1), "") << outside;
  }
}

TEST(ByteString, FindsFromThePositionOnAndDividesAtEveryDelimiter) {
  EXPECT_EQ(InStrB(2, "abcabc", "bc"), 2);
  EXPECT_EQ(InStrB(3, "abcabc", "bc"), 5);
  EXPECT_EQ(InStrB(9, "abc", "c"), 0);
  EXPECT_EQ(CountFieldsB("a---b----", "--"), 4);
  const std::string_view fields[] = {"", "a", "-b", "", "", ""};
  for (int n = 0; n < 6; ++n) EXPECT_EQ(NthFieldB("a---b----", "--", n), fields[n]) << n;
}

}  // namespace
}  // namespace vintrace::inspection
