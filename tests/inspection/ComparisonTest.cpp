// The inspection against a second, plain implementation of it, over generated documents.

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "inspection/VersionCheck.h"
#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/ReferenceInspection.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

class DocumentGenerator {
 public:
  explicit DocumentGenerator(std::uint32_t seed) : random_(seed) {}

  std::string Next() {
    DocumentBuilder document(Size());
    if (OneIn(3)) document.BigEndian();
    if (!OneIn(50)) document.Release(Version(), OneIn(3) ? 5 : 0);
    PutPieces(document);
    if (OneIn(20)) document.Put(24, std::string(1, static_cast<char>(Byte(0, 3))));
    std::string bytes = document.Bytes();
    if (OneIn(4)) bytes.resize(Between(0, bytes.size()));
    return bytes;
  }

 private:
  std::size_t Between(std::size_t low, std::size_t high) {
    return std::uniform_int_distribution(low, high)(random_);
  }
  std::uint8_t Byte(std::size_t low, std::size_t high) {
    return static_cast<std::uint8_t>(Between(low, high));
  }
  bool OneIn(std::size_t n) { return Between(1, n) == 1; }

  std::uint8_t Version() { return OneIn(20) ? Byte(0, 255) : Byte(3, 14); }

  /// A size near one at which something changes.
  std::size_t Size() { return OneIn(20) ? Between(0, 60) : Boundary() - 3 + Between(0, 6); }

  /// An offset at which a block begins or ends.
  std::size_t Boundary() {
    const std::size_t block = BodyStart + Between(0, 3) * BlockStride;
    return OneIn(2) ? block : block + BlockSize;
  }

  std::string BuildLike() {
    constexpr std::string_view Alphabet("0123456789.5x/:\0\x01\x03\x40\x09", 20);
    std::string text(Between(0, 9), '\0');
    for (char& c : text) c = Alphabet[Between(0, Alphabet.size() - 1)];
    return text;
  }

  void PutPieces(DocumentBuilder& document) {
    const auto near = [&] { return Boundary() - 40 + Between(0, 80); };
    for (auto rounds = Between(0, 2); rounds > 0; --rounds) {
      if (OneIn(2)) document.Marker(near());
      if (OneIn(2)) document.Delimiter(near(), BuildLike());
      if (OneIn(2)) document.Saved(near(), Byte(0, 4), BuildLike());
      if (OneIn(2)) document.Put(near(), BuildLike());
      if (OneIn(2)) document.EditionBefore(near(), Byte(0, 4));
    }
  }

  std::mt19937 random_;
};

TEST(Comparison, BothInspectionsAgreeOnEveryGeneratedDocument) {
  constexpr int Documents = 30'000;
  const TemporaryFolder folder;
  DocumentGenerator generator(20191105);
  std::set<std::string> editions;
  for (int i = 0; i < Documents; ++i) {
    const std::string bytes = generator.Next();
    const ReportFields found = Inspect(folder.File("sample.indd", bytes));
    ASSERT_EQ(found, InspectByReference("sample.indd", bytes)) << "document " << i;
    editions.insert(found.editionText);
  }
  EXPECT_EQ(editions.size(), 4U) << "some part of the format isn't generated";
}

TEST(Comparison, BothInspectionsAgreeOnEveryGeneratedName) {
  constexpr std::string_view Alphabet(".iInNdD\0\xFF", 9);
  std::mt19937 random(20191105);
  std::uniform_int_distribution<std::size_t> length(0, 7);
  std::uniform_int_distribution<std::size_t> letter(0, Alphabet.size() - 1);
  int documents = 0;
  for (int i = 0; i < 200'000; ++i) {
    std::string name(length(random), '\0');
    for (char& c : name) c = Alphabet[letter(random)];
    const bool isDocument = inspection::IsDocumentName(name);
    ASSERT_EQ(isDocument, InspectByReference(name, "").has_value()) << testing::PrintToString(name);
    documents += isDocument ? 1 : 0;
  }
  EXPECT_GT(documents, 10);
}

}  // namespace
}  // namespace vintrace::test
