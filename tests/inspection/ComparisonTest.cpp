// The inspection against the reference implementation, with generated documents.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>

#include "inspection/Blocks.h"
#include "inspection/ByteString.h"
#include "support/GeneratedDocument.h"
#include "support/RecordingReport.h"
#include "support/ReferenceInspection.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

TEST(Comparison, BothInspectionsAgreeOnEveryGeneratedDocument) {
  constexpr int Documents = 30'000;
  const TemporaryFolder folder;
  std::mt19937 random(20191105);
  std::string choices(512, '\0');
  std::set<std::string> editions;
  for (int i = 0; i < Documents; ++i) {
    std::ranges::generate(choices, [&] { return static_cast<char>(random()); });
    const std::string bytes = GeneratedDocument(choices);
    const ReportFields found = Inspect(folder.File("sample.indd", bytes));
    ASSERT_EQ(found, InspectByReference(bytes)) << "document " << i;
    editions.insert(found.editionText);
  }
  EXPECT_EQ(editions.size(), 4U) << "the generator misses some editions";
}

/// Writes `bytes` without the pages that are all zero, which become holes.
FolderItem SparseFile(const TemporaryFolder& folder, const std::string& bytes) {
  constexpr std::size_t Page = 4096;
  const FolderItem file = folder.File("sparse.indd", "");
  std::ofstream stream(file.NativePath());
  for (std::size_t at = 0; at < bytes.size(); at += Page) {
    const std::string page = bytes.substr(at, Page);
    if (page.find_first_not_of('\0') == std::string::npos) continue;
    stream.seekp(static_cast<std::streamoff>(at));
    stream << page;
  }
  stream.close();
  std::filesystem::resize_file(file.NativePath(), bytes.size());
  return file;
}

TEST(Comparison, HolesReadAsZeros) {
  constexpr int Documents = 3000;
  const TemporaryFolder folder;
  std::mt19937 random(4);
  std::string choices(512, '\0');
  for (int i = 0; i < Documents; ++i) {
    std::ranges::generate(choices, [&] { return static_cast<char>(random()); });
    std::string bytes = GeneratedDocument(choices);
    std::ranges::replace(bytes, 'x', '\0');
    // Far after the others, and after a long hole.
    if (i % 5 == 0) bytes += std::string((random() % 300) * 2048 + random() % 3, '\0');
    if (i % 10 == 0) bytes += "\x09\x40\x38.0.0.397" + std::string(random() % 8192, '\0');
    ASSERT_EQ(Inspect(SparseFile(folder, bytes)), InspectByReference(bytes)) << "document " << i;
  }
}

TEST(Comparison, ADocumentThatGrowsEndsWhereItDidAndOneThatShrinksWhereItDoes) {
  constexpr std::string_view Delimiter = "\x09\x40\x38.";
  const TemporaryFolder folder;
  const FolderItem file = folder.File("a.indd", std::string(40960 + 7000, 'x'));
  inspection::Blocks growing(file, Delimiter);
  std::ofstream(file.NativePath(), std::ios::app) << std::string(300'000, 'y') << Delimiter;
  EXPECT_EQ(growing.Next(), std::string(7000 - 4096, 'x'));
  EXPECT_TRUE(growing.IsLast());
  inspection::Blocks shrinking(file, Delimiter);
  std::filesystem::resize_file(file.NativePath(), 40960 + 10);
  EXPECT_EQ(shrinking.Next(), std::string(10, 'x'));
  EXPECT_TRUE(shrinking.IsLast());
}

TEST(Comparison, TheSearchFindsWhatThePlainOneFinds) {
  std::mt19937 random(64);
  const auto text = [&](std::size_t size) {
    std::string bytes(size, '\0');
    std::ranges::generate(bytes, [&] { return random() % 4 == 0 ? 'b' : 'a'; });
    return bytes;
  };
  for (int i = 0; i < 20'000; ++i) {
    const std::string source = text(random() % 300);
    const std::string needle = text(1 + random() % 9);
    const std::size_t start = 1 + random() % 100;
    const auto found = source.size() < start ? std::string::npos : source.find(needle, start - 1);
    ASSERT_EQ(inspection::InStrB(static_cast<std::int64_t>(start), source, needle),
              found == std::string::npos ? 0 : static_cast<std::int64_t>(found) + 1)
        << source << ' ' << needle << ' ' << start;
  }
}

}  // namespace
}  // namespace vintrace::test
