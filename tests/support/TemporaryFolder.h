#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files/FolderItem.h"

namespace vintrace::test {

/// A new, empty folder, which goes with all that is in it when the object does.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& Path() const { return path_; }

  /// The item of that name in the folder; nothing is made.
  FolderItem Item(std::string_view name) const;

  /// Makes the file `name` with these bytes.
  FolderItem File(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace vintrace::test
