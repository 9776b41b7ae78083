// Header blocks, as they are parsed, changed and formatted.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Require.h"
#include "online/InternetHeaders.h"

namespace vintrace::fuzz {
namespace {

using online::InternetHeaders;

std::int64_t LinesIn(std::string_view text) {
  std::int64_t lines = text.empty() ? 0 : 1;
  for (const char byte : text) lines += byte == '\n' ? 1 : 0;
  return lines;
}

/// The values are reached by their names, and each is formatted as one line.
void RequireWhole(const InternetHeaders& headers) {
  for (const auto i : {std::int64_t{0}, headers.Count() / 2, headers.Count() - 1}) {
    if (headers.Count() > 0) Require(headers.NameCount(headers.Name(i)) > 0);
  }
  Require(LinesIn(headers._FormatHTTPHeaders()) == headers.Count());
  Require(LinesIn(headers._FormatEmailHeaders()) <= headers.Count());
}

void Run(std::string_view text) {
  InternetHeaders headers;
  headers._ParseHeaders(text);
  RequireWhole(headers);
  Require(text.empty() || headers.Source() == text);
  const auto count = headers.Count();
  if (count == 0) return;
  const auto middle = headers.Name(count / 2);
  headers.Delete(middle, headers.NameCount(middle) - 1);
  Require(headers.Count() == count - 1);
  headers.AppendHeader(middle, text);
  RequireWhole(headers);
  headers.SetHeader(middle, "only");
  Require(headers.CommaSeparatedValues(middle) == "only");
  RequireWhole(headers);
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
