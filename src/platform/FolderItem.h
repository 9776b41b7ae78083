#pragma once

#include <optional>
#include <utility>

#include "platform/String.h"

namespace vintrace {

/// A file or folder by its location. It may name a file that doesn't exist. The absent object is an
/// empty `std::optional<FolderItem>`.
class FolderItem {
 public:
  /// `path`: raw bytes as the system gave them; absolute, or relative to the working directory.
  explicit FolderItem(String path) : path_(std::move(path)) {}

  /// The whole path, raw bytes for the system.
  const String& NativePath() const { return path_; }

  /// The leaf name, raw bytes: what stands behind the last slash, slashes at the end aside. Empty
  /// for the root folder.
  String Name() const;

 private:
  String path_;
};

/// The item of a path that was given relative to `folder`, an absolute path. An absolute path, an
/// empty one, and any path when `folder` is empty, is taken as it is. No file is touched, and
/// neither dots nor links are resolved.
FolderItem ItemRelativeTo(std::string_view folder, std::string_view path);

}  // namespace vintrace
