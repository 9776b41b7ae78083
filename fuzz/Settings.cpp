// The settings file: its lines, and their paths in shell form.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "launch/LocationStore.h"
#include "support/TemporaryFolder.h"

namespace vintrace::fuzz {
namespace {

/// The lines, split without the program's code.
std::vector<String> LinesOf(std::string_view bytes) {
  std::vector<String> lines(1);
  for (const char byte : bytes) {
    if (byte != '\n') {
      lines.back() += byte;
      continue;
    }
    if (lines.back().ends_with('\r')) lines.back().pop_back();
    lines.emplace_back();
  }
  if (lines.size() > 1 && lines.back().empty()) lines.pop_back();
  return lines;
}

/// Requires that a path is the same after a round trip through its shell form.
void RequireReadable(const String& line) {
  const auto item = GetFolderItem(line, PathMode::Shell);
  if (!item) return;
  Require(item->NativePath().starts_with('/'));
  const auto again = GetFolderItem(item->ShellPath(), PathMode::Shell);
  Require(again && again->NativePath() == item->NativePath());
}

void Run(std::string_view bytes) {
  static const test::TemporaryFolder folder;
  const FolderItem file = folder.File("VNTR.ini", bytes);
  std::vector<String> locations;
  launch::LoadLocations(file, locations);
  Require(locations == LinesOf(bytes));
  for (const String& line : locations) RequireReadable(line);
}

}  // namespace
}  // namespace vintrace::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vintrace::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
