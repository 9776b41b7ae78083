#include <gtest/gtest.h>

#include <array>
#include <set>
#include <utility>

#include "platform/AppResources.h"
#include "platform/Desktop.h"
#include "platform/Exceptions.h"
#include "resources/FileTypes1.h"
#include "resources/Pictures.h"
#include "support/ScriptedHost.h"

namespace vintrace::test {
namespace {

using Size = std::pair<int, int>;

/// The size that a PNG file gives in its IHDR chunk, bytes 16 to 23, big-endian; {0, 0} when it is
/// no PNG file.
Size SizeOf(std::string_view png) {
  if (!png.starts_with("\x89PNG\r\n\x1A\n") || png.size() < 24) return {0, 0};
  const auto number = [&](std::size_t at) {
    int value = 0;
    for (const char c : png.substr(at, 4)) value = value * 256 + static_cast<unsigned char>(c);
    return value;
  };
  return {number(16), number(20)};
}

TEST(Pictures, AllSixteenDifferAndHaveTheirSizesAndCompanions) {
  using namespace pictures;
  std::set<std::string_view> seen;
  for (const auto accessor : {cs, cs2, cs3, cs4, cs5, cs55, cs6, cc, cc2014, cc2015, cc2017, cc2018,
                              cc2019, und, splash, icon48}) {
    const auto picture = accessor();
    EXPECT_EQ(SizeOf(picture->Png()), accessor == splash ? Size(460, 300) : Size(48, 48));
    EXPECT_EQ(SizeOf(picture->PngAt2x()), accessor == splash ? Size(920, 600) : Size(96, 96));
    EXPECT_EQ(accessor(), picture) << "opened twice";
    seen.insert({picture->Png(), picture->PngAt2x()});
  }
  EXPECT_EQ(seen.size(), 32U);
  EXPECT_EQ(AppResources().size(), 32U);
}

TEST(Pictures, OneThatIsNotThereRaises) {
  EXPECT_THROW(Picture::_OpenFromApp("cs7.png"), IOException);
  EXPECT_THROW(Picture::_OpenFromApp("cs"), IOException);
}

TEST(FileTypes1, DialogsKnowTheTypeOnceItIsInitialised) {
  ScriptedHost host;
  FileTypes1::_Initialize();
  desktop::GetOpenFolderItem("indd");
  desktop::GetOpenFolderItem("other");
  EXPECT_EQ(host.story, (std::vector<std::string>{"open dialog: indd (.indd)", "open dialog:"}));
}

}  // namespace
}  // namespace vintrace::test
