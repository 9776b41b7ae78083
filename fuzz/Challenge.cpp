// Authentication challenges and the answers to them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Require.h"
#include "online/http/Authentication.h"

namespace vintrace::fuzz {
namespace {

void Run(std::string_view text) {
  const auto challenge = http::ParseChallenge(text);
  Require(text.starts_with(challenge.scheme));
  Require(challenge.scheme.find(' ') == String::npos);
  const auto commas = std::ranges::count(text, ',');
  Require(static_cast<std::int64_t>(challenge.parameters.Count()) <= commas + 1);
  for (const auto& [name, value] : challenge.parameters) {
    Require(text.find(name) != std::string_view::npos);
    Require(text.find(value) != std::string_view::npos);
  }
  const String answer =
      http::DigestAnswer(text, text, challenge.parameters,
                         {.uses = 1, .clientNonce = "c", .hash = [](std::string_view each) {
                            return String(each.substr(0, 16));
                          }});
  Require(answer.starts_with("Digest username=\""));
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
