// The inspection against a second, plain implementation of it, over generated documents.

#include <gtest/gtest.h>

#include <random>

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
    for (auto pieces = Between(0, 5); pieces > 0; --pieces) PutPiece(document);
    std::string bytes = document.Bytes();
    if (OneIn(4))
      bytes.resize(static_cast<std::size_t>(Between(0, static_cast<std::int64_t>(bytes.size()))));
    return bytes;
  }

 private:
  std::int64_t Between(std::int64_t low, std::int64_t high) {
    return std::uniform_int_distribution(low, high)(random_);
  }
  bool OneIn(std::int64_t n) { return Between(1, n) == 1; }

  std::uint8_t Version() {
    return static_cast<std::uint8_t>(OneIn(20) ? Between(0, 255) : Between(3, 14));
  }

  /// A size near one at which something changes.
  std::size_t Size() {
    if (OneIn(20)) return static_cast<std::size_t>(Between(0, 60));
    return static_cast<std::size_t>(Boundary() + Between(-3, 3));
  }

  /// An offset at which a block begins or ends.
  std::int64_t Boundary() {
    const auto block = static_cast<std::int64_t>(BodyStart) +
                       Between(0, 3) * static_cast<std::int64_t>(BlockStride);
    return OneIn(2) ? block : block + static_cast<std::int64_t>(BlockSize);
  }

  std::string BuildLike() {
    constexpr std::string_view Alphabet("0123456789.5x\0\x01\x03\x40\x09", 18);
    std::string text;
    for (auto n = Between(0, 9); n > 0; --n) {
      text += Alphabet[static_cast<std::size_t>(
          Between(0, static_cast<std::int64_t>(Alphabet.size()) - 1))];
    }
    return text;
  }

  void PutPiece(DocumentBuilder& document) {
    const auto offset = static_cast<std::size_t>(Boundary() + Between(-40, 40));
    switch (Between(0, 4)) {
      case 0:
        document.Marker(offset);
        break;
      case 1:
        document.Delimiter(offset, BuildLike());
        break;
      case 2:
        document.Saved(offset, static_cast<std::uint8_t>(Between(0, 4)), BuildLike());
        break;
      case 3:
        document.Put(offset, BuildLike());
        break;
      default:
        document.EditionBefore(offset, static_cast<std::uint8_t>(Between(0, 4)));
    }
  }

  std::mt19937 random_;
};

ReportFields FieldsOf(const ReferenceReport& report) {
  return {report.documentName, report.productText, report.picture,
          report.editionText,  report.buildText,   report.openable};
}

TEST(Comparison, BothInspectionsAgreeOnEveryGeneratedDocument) {
  constexpr int Documents = 30'000;
  const TemporaryFolder folder;
  DocumentGenerator generator(20191105);
  for (int i = 0; i < Documents; ++i) {
    const std::string bytes = generator.Next();
    const ReportFields found = Inspect(folder.File("sample.indd", bytes));
    ASSERT_EQ(found, FieldsOf(InspectByReference("sample.indd", bytes))) << "document " << i;
  }
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
    ASSERT_EQ(isDocument, InspectByReference(name, "").window) << testing::PrintToString(name);
    documents += isDocument ? 1 : 0;
  }
  EXPECT_GT(documents, 10);
}

}  // namespace
}  // namespace vintrace::test
