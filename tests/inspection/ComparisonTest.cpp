// The inspection against the reference implementation, with generated documents.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

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

}  // namespace
}  // namespace vintrace::test
