#include "launch/LocationStore.h"

#include <algorithm>

#include "platform/files/TextStreams.h"

namespace vintrace::launch {

void LoadLocations(const FolderItem& file, std::vector<String>& locations) {
  if (!file.Exists()) {
    auto stream = TextOutputStream::Create(file);
    stream.Write("");
    return stream.Close();
  }
  auto stream = TextInputStream::Open(file);
  // Tests for the end only after the first line, so that an empty file has one empty line.
  do {
    locations.push_back(stream.ReadLine());
  } while (!stream.EndOfFile());
  stream.Close();
}

std::optional<std::int64_t> FindLocation(const std::vector<String>& locations,
                                         std::string_view product) {
  const auto found = std::ranges::find_if(locations, [&](const String& location) {
    return InStr(0, ReplaceAll(location, "\\", ""), product) > 0;
  });
  if (found == locations.end()) return std::nullopt;
  return found - locations.begin();
}

void RewriteLocations(const std::optional<FolderItem>& file, const std::vector<String>& locations) {
  auto stream = TextOutputStream::Create(file);
  for (const String& location : locations) {
    if (location.find('\n') == String::npos) stream.WriteLine(location);
  }
  stream.Close();
}

}  // namespace vintrace::launch
