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

  /// The item `name` in this folder, whether it exists or not.
  FolderItem Child(std::string_view name) const;

  /// True when something lies at the location, of whatever kind; what a link leads to counts. So
  /// does what the system can't tell of.
  bool Exists() const;

  /// The whole path in shell form: a POSIX shell reads it as one word of the same bytes, whatever
  /// they are. What a shell could read otherwise stands behind a backslash, and line feeds, for
  /// which that can't be, as well as carriage returns in single quotes.
  String ShellPath() const;

 private:
  String path_;
};

/// How a path is written.
enum class PathMode { Native = 0, Shell = 1 };

/// The item at `path`, which is absolute; nothing needs to lie there. In shell form backslashes and
/// single quotes are taken away as a shell would take them, and everything else is itself. Nil for
/// what can't be an absolute path, and for a shell form that ends in the midst of a quotation.
std::optional<FolderItem> GetFolderItem(std::string_view path, PathMode mode);

/// The item of a path that was given relative to `folder`, an absolute path. An absolute path, an
/// empty one, and any path when `folder` is empty, is taken as it is. No file is touched, and
/// neither dots nor links are resolved.
FolderItem ItemRelativeTo(std::string_view folder, std::string_view path);

}  // namespace vintrace
