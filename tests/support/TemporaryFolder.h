#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files/FolderItem.h"

namespace vintrace::test {

/// A new, empty folder, removed with its contents by the destructor.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& Path() const { return path_; }

  /// The item `name` in the folder, whether it exists or not.
  FolderItem Item(std::string_view name) const;

  /// Writes the file `name`. Raises `std::runtime_error` if that fails.
  FolderItem File(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace vintrace::test
