#include "inspection/ByteString.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vintrace::inspection {
namespace {

using namespace std::string_literals;

TEST(ByteString, CutsWhatIsThereAndNoMore) {
  constexpr auto Lowest = std::numeric_limits<std::int64_t>::min();
  constexpr auto Highest = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(LeftB("abc", 2), "ab");
  EXPECT_EQ(LeftB("abc", Highest), "abc");
  EXPECT_EQ(LeftB("abc", -1), "");
  EXPECT_EQ(RightB("abc", 2), "bc");
  EXPECT_EQ(RightB(".ind", 5), ".ind");
  EXPECT_EQ(MidB("abc", 3, 1), "c");
  EXPECT_EQ(MidB("abc", 2, 9), "bc");
  for (const std::int64_t outside :
       {Lowest, std::int64_t{-1}, std::int64_t{0}, std::int64_t{4}, Highest}) {
    EXPECT_EQ(MidB("abc", outside, 1), "") << outside;
  }
}

TEST(ByteString, ZeroIsAByteLikeAnyOther) {
  EXPECT_EQ(LenB("a\0b"s), 3);
  EXPECT_NE(ChrB(0), ""s);
  EXPECT_EQ(MidB("a\0b"s, 2, 1), ChrB(0));
  EXPECT_EQ(InStrB(0, "ab\0\x09\xE6"s, "\0\x09\xE6"s), 3);
}

TEST(ByteString, HighBytesStayOneByte) {
  EXPECT_EQ(ChrB(0xE6), "\xE6");
  EXPECT_EQ(Asc("\xFF"), 255);
  EXPECT_EQ(Asc(""), 0);
}

TEST(InStrB, FindsFromThePositionOnAndKnowsCase) {
  EXPECT_EQ(InStrB(0, "abcabc", "bc"), 2);
  EXPECT_EQ(InStrB(3, "abcabc", "bc"), 5);
  EXPECT_EQ(InStrB(0, "abc", "BC"), 0);
  EXPECT_EQ(InStrB(9, "abc", "c"), 0);
  EXPECT_EQ(InStrB(std::numeric_limits<std::int64_t>::min(), "abc", "c"), 3);
}

struct FieldsCase {
  std::string_view claim;
  std::string source;
  std::vector<std::string> fields;
};

TEST(NthFieldB, DividesAtEveryDelimiter) {
  const FieldsCase cases[] = {
      {"an empty source has no field", "", {}},
      {"without a delimiter, the source is field 1", "abc", {"abc"}},
      {"a delimiter divides", "a--b", {"a", "b"}},
      {"a delimiter at the end leaves an empty last field", "a--", {"a", ""}},
      {"a delimiter alone has an empty field on each side", "--", {"", ""}},
      {"two adjacent delimiters enclose an empty field", "a----b", {"a", "", "b"}},
      {"half a delimiter divides nothing", "a-b-", {"a-b-"}},
      {"delimiters don't overlap", "a---b", {"a", "-b"}},
  };
  for (const auto& [claim, source, fields] : cases) {
    SCOPED_TRACE(claim);
    const auto count = static_cast<std::int64_t>(fields.size());
    EXPECT_EQ(CountFieldsB(source, "--"), count);
    for (std::int64_t n = 1; n <= count; ++n) {
      EXPECT_EQ(NthFieldB(source, "--", n), fields[static_cast<std::size_t>(n - 1)]) << n;
    }
    EXPECT_EQ(NthFieldB(source, "--", 0), "");
    EXPECT_EQ(NthFieldB(source, "--", count + 1), "");
  }
}

TEST(BeginsWithDigit, KnowsOnlyTheTenAsciiDigits) {
  for (int value = 0; value < 256; ++value) {
    EXPECT_EQ(BeginsWithDigit(ChrB(static_cast<std::uint8_t>(value))),
              value >= 0x30 && value <= 0x39)
        << value;
  }
  EXPECT_FALSE(BeginsWithDigit(""));
}

}  // namespace
}  // namespace vintrace::inspection
