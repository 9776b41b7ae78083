// Parsing, changing and formatting header blocks.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Require.h"
#include "online/http/InternetHeaders.h"

namespace vintrace::fuzz {
namespace {

using http::InternetHeaders;

/// Requires that each header is formatted as one line.
void RequireWhole(const InternetHeaders& headers) {
  const auto lineEnds = std::max<std::int64_t>(headers.Count() - 1, 0);
  Require(std::ranges::count(headers._FormatHTTPHeaders(), '\n') == lineEnds);
  Require(std::ranges::count(headers._FormatEmailHeaders(), '\n') <= lineEnds);
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
