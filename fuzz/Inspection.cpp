// The inspection against the reference implementation.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "support/DocumentBuilder.h"
#include "support/GeneratedDocument.h"
#include "support/RecordingReport.h"
#include "support/ReferenceInspection.h"
#include "support/TemporaryFolder.h"

namespace vintrace::fuzz {
namespace {

void Compare(const std::string& document) {
  static const test::TemporaryFolder folder;
  Require(test::Inspect(folder.File("sample.indd", document)) ==
          test::InspectByReference(document));
}

/// A document with the first bytes as its header, the others as its body, and zeros in between.
std::string DocumentWith(std::string_view bytes) {
  constexpr std::size_t HeaderSize = 48;
  std::string document(bytes.substr(0, HeaderSize));
  if (document.size() < HeaderSize) return document;
  document.resize(test::BodyStart);
  return document.append(bytes.substr(HeaderSize));
}

void Run(std::string_view bytes) {
  Compare(DocumentWith(bytes));
  Compare(test::GeneratedDocument(bytes));
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
