// Documents, against the second, plain inspection. The first byte tells the size; the header
// follows, and behind it what lies in the body, piece by piece: its place, its kind or length, and
// its bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "support/DocumentBuilder.h"
#include "support/RecordingReport.h"
#include "support/ReferenceInspection.h"
#include "support/TemporaryFolder.h"

namespace vintrace::fuzz {
namespace {

constexpr std::size_t HeaderSize = 48;
constexpr std::size_t OrderAt = 24;
constexpr std::size_t BeforeBody = 64;  // Pieces may begin so far before the body.

/// What is left of an input.
class Input {
 public:
  explicit Input(std::string_view bytes) : rest_(bytes) {}
  bool IsEmpty() const { return rest_.empty(); }
  std::string_view Take(std::size_t size) {
    const auto taken = rest_.substr(0, size);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  std::size_t Byte() {
    const auto taken = Take(1);
    return taken.empty() ? 0 : static_cast<unsigned char>(taken.front());
  }

 private:
  std::string_view rest_;
};

void PutPiece(test::DocumentBuilder& document, Input& input) {
  enum Kind : std::size_t { Marker = 255, Delimiter = 254, Saved = 253 };
  constexpr std::size_t LongestBuild = 8;
  const std::size_t high = input.Byte();
  const std::size_t offset = test::BodyStart - BeforeBody + (high << 8 | input.Byte());
  const std::size_t kind = input.Byte();
  switch (kind) {
    case Marker:
      document.Marker(offset);
      break;
    case Delimiter:
      document.Delimiter(offset, input.Take(LongestBuild));
      break;
    case Saved: {
      const auto edition = static_cast<std::uint8_t>(input.Byte());
      document.Saved(offset, edition, input.Take(LongestBuild));
      break;
    }
    default:
      document.Put(offset, input.Take(kind));
  }
}

std::string DocumentOf(std::string_view bytes) {
  Input input(bytes);
  const std::size_t blocks = input.Byte();
  if (blocks == 0) return std::string(input.Take(bytes.size()));
  test::DocumentBuilder document(test::BodyStart - BeforeBody + (blocks << 8));
  const auto header = input.Take(HeaderSize);
  if (header.size() > OrderAt && header[OrderAt] == 2) document.BigEndian();
  document.Put(0, header);
  if (header.size() == HeaderSize) document.Release(static_cast<std::uint8_t>(header[29]));
  while (!input.IsEmpty()) PutPiece(document, input);
  return document.Bytes();
}

void Run(std::string_view bytes) {
  static const test::TemporaryFolder folder;
  const std::string document = DocumentOf(bytes);
  Require(test::Inspect(folder.File("sample.indd", document)) ==
          test::InspectByReference("sample.indd", document));
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
