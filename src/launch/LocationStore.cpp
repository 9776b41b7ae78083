#include "launch/LocationStore.h"

#include <algorithm>

#include "platform/Exceptions.h"
#include "platform/TextStreams.h"

namespace vintrace::launch {
namespace {

void MakeEmpty(const FolderItem& file) {
  auto stream = TextOutputStream::Create(file);
  stream.Write("");
  stream.Close();
}

/// Does `operation` with the file, which the reason for a failure names then.
template <class Operation>
auto Naming(const std::optional<FolderItem>& file, const Operation& operation) {
  try {
    return operation();
  } catch (const IOException& exception) {
    String reason = file.value().NativePath();
    throw IOException(exception.ErrorNumber(), reason.append(": ").append(exception.what()));
  }
}

std::vector<String> Load(const FolderItem& file) {
  std::vector<String> locations;
  if (!file.Exists()) {
    MakeEmpty(file);
    return locations;
  }
  auto stream = TextInputStream::Open(file);
  // The end is looked for behind each line and not before the first, so that an empty file has one.
  do {
    locations.push_back(stream.ReadLine());
  } while (!stream.EndOfFile());
  stream.Close();
  return locations;
}

}  // namespace

std::vector<String> LoadLocations(const FolderItem& file) {
  return Naming(file, [&] { return Load(file); });
}

std::optional<std::int64_t> FindLocation(const std::vector<String>& locations,
                                         std::string_view product) {
  const auto found = std::ranges::find_if(locations, [&](const String& location) {
    return InStr(0, ReplaceAll(location, "\\", ""), product) > 0;
  });
  if (found == locations.end()) return std::nullopt;
  return found - locations.begin();
}

void AddLocation(const std::optional<FolderItem>& file, std::vector<String>& locations,
                 const String& location) {
  locations.push_back(location);
  RewriteLocations(file, locations);
}

void RemoveLocation(const std::optional<FolderItem>& file, std::vector<String>& locations,
                    std::int64_t index) {
  locations.erase(locations.begin() + index);
  RewriteLocations(file, locations);
}

void RewriteLocations(const std::optional<FolderItem>& file, const std::vector<String>& locations) {
  Naming(file, [&] {
    auto stream = TextOutputStream::Create(file);
    for (const String& location : locations) stream.WriteLine(location);
    stream.Close();
  });
}

}  // namespace vintrace::launch
