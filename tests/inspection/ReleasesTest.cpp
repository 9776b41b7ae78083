// Each release once, with the bytes that its documents have and the row that must come out.

#include <gtest/gtest.h>

#include "support/RecordingReport.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

using namespace std::string_literals;

enum Order : char { Little = 1, Big = 2 };

// Seven bytes of the text 不明なユ in UTF-16.
const std::string MarkerLittle = "\x4E\x0E\x66\x6A\x30\xE6\x30";
const std::string MarkerBig = "\x4E\x0D\x66\x0E\x30\x6A\x30";

const std::string Mac(1, '\x00');
const std::string Windows = "\x01";
const std::string WindowsToo = "\x03";
const std::string Neither = "\x02";

/// Where documents without a marker have the edition: the 19th or, in big-endian ones, the 23rd
/// byte.
std::string Without(Order order, const std::string& edition) {
  return std::string(order == Big ? 22 : 18, '-') + edition + "----------------";
}

/// A document with this header and body.
std::string Document(Order order, char majorVersion, char minorVersion, const std::string& body) {
  std::string bytes(40960, '-');
  bytes[24] = order;
  const std::string zeros(3, '\0');
  bytes.replace(29, 8,
                order == Big ? zeros + majorVersion + zeros + minorVersion
                             : majorVersion + zeros + minorVersion + zeros);
  // The file goes on, so that the first block isn't the last.
  return bytes + body + std::string(10000, '-');
}

TEST(Releases, EachShowsItsProductEditionAndBuild) {
  const std::string twelve(12, '-');
  const struct {
    Order order;
    char majorVersion;
    char minorVersion;
    std::string body;
    std::string product, edition, build, picture;
  } rows[] = {
      {Little, 3, 0,
       MarkerLittle + Mac + twelve +
           "\x09\x40"
           "3.0.0.424 ",
       "Adobe InDesign CS", "Macintosh Edition", "3.0.0.424", "cs"},
      {Big, 4, 0,
       MarkerBig + Windows +
           "-----------"
           "\x40\x09"
           "4.0.0.436 ",
       "Adobe InDesign CS2", "Windows Edition", "4.0.0.436", "cs2"},
      {Little, 5, 0,
       Without(Little, Windows) + "\x09\x40"
                                  "5.0.0.458 ",
       "Adobe InDesign CS3", "Windows Edition", "5.0.0.458", "cs3"},
      {Big, 6, 0,
       Without(Big, Mac) + "\x40\x09"
                           "6.0.6.457 ",
       "Adobe InDesign CS4", "Macintosh Edition", "6.0.6.457", "cs4"},
      {Little, 7, 0,
       MarkerLittle + WindowsToo + twelve +
           "\x09\x40"
           "7.0.4.535 ",
       "Adobe InDesign CS5", "Windows Edition", "7.0.4.535", "cs5"},
      {Little, 7, 5,
       MarkerLittle + Mac + twelve +
           "\x09\x40"
           "7.5.0.142 ",
       "Adobe InDesign CS5.5", "Macintosh Edition", "7.5.0.142", "cs55"},
      {Big, 7, 5,
       MarkerBig + Mac +
           "-----------"
           "\x40\x09"
           "7.5.0.142 ",
       "Adobe InDesign CS5.5", "Macintosh Edition", "7.5.0.142", "cs55"},
      {Little, 8, 0,
       MarkerLittle + Neither + twelve +
           "\x09\x40"
           "8.0.0.370 ",
       "Adobe InDesign CS6", "不明", "8.0.0.370", "cs6"},
      {Little, 9, 0,
       MarkerLittle + Windows + twelve +
           "\x09\x40"
           "9.3.0.34 ",
       "Adobe InDesign CC", "Windows Edition", "9.3.0.34", "cc"},
      {Little, 10, 0,
       MarkerLittle + Mac + twelve +
           "-"
           "\x40"
           "10.0.0.70 ",
       "Adobe InDesign CC 2014", "Macintosh Edition", "10.0.0.70", "cc2014"},
      {Big, 11, 0,
       MarkerBig + Windows +
           "-----------"
           "\x40"
           "11.4.1.102 ",
       "Adobe InDesign CC 2015", "Windows Edition", "11.4.1.102", "cc2015"},
      {Little, 12, 0,
       Without(Little, Mac) + "\x40"
                              "12.1.0.56 ",
       "Adobe InDesign CC 2017", "Macintosh Edition", "12.1.0.56", "cc2017"},
      {Big, 13, 0,
       Without(Big, Windows) + "\x40"
                               "13.1.0.76 ",
       "Adobe InDesign CC 2018", "Windows Edition", "13.1.0.76", "cc2018"},
      {Little, 14, 0,
       MarkerLittle + WindowsToo + twelve +
           "-"
           "\x40"
           "14.0.0.45 ",
       "Adobe InDesign CC 2019", "Windows Edition", "14.0.0.45", "cc2019"},
      {Little, 2, 0, "", "InDesign CSより下位", "", "", "und"},
      {Big, 15, 0, "", "Ver.15 CC2019より新しい", "", "", "und"},
  };
  const TemporaryFolder folder;
  for (const auto& row : rows) {
    const std::string bytes = Document(row.order, row.majorVersion, row.minorVersion, row.body);
    const ReportFields found = Inspect(folder.File("a.indd", bytes));
    EXPECT_EQ(found.productText, row.product);
    EXPECT_EQ(found.editionText, row.edition) << row.product;
    EXPECT_EQ(found.buildText, row.build.empty() ? "サブバージョン不明" : row.build) << row.product;
    EXPECT_EQ(found.picture, row.picture) << row.product;
  }
}

}  // namespace
}  // namespace vintrace::test
