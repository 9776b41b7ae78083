#include "launch/LocationStore.h"

#include "platform/TextStreams.h"

namespace vintrace::launch {
namespace {

void MakeEmpty(const FolderItem& file) {
  auto stream = TextOutputStream::Create(file);
  stream.Write("");
  stream.Close();
}

}  // namespace

std::vector<String> LoadLocations(const FolderItem& file) {
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

void RewriteLocations(const std::optional<FolderItem>& file, const std::vector<String>& locations) {
  auto stream = TextOutputStream::Create(file);
  for (const String& location : locations) stream.WriteLine(location);
  stream.Close();
}

}  // namespace vintrace::launch
