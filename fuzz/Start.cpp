// What another start of the program says through the channel, as it comes in piece by piece.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Require.h"
#include "platform/posix/StartMessage.h"

namespace vintrace::fuzz {
namespace {

void Run(std::string_view bytes) {
  const auto request = posix::DecodeStartMessage(bytes);
  bool mayBecome = true;
  for (std::size_t size = 0; size <= bytes.size(); ++size) {
    const bool still = posix::MayBecomeStartMessage(bytes.substr(0, size));
    Require(mayBecome || !still);
    Require(still || !posix::DecodeStartMessage(bytes.substr(0, size)));
    mayBecome = still;
  }
  if (!request) return;
  Require(mayBecome);
  Require(posix::EncodeStartMessage(*request) == bytes);
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
