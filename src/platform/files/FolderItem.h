#pragma once

#include <optional>
#include <string_view>
#include <utility>

#include "platform/text/String.h"

namespace vintrace {

/// A reference to a file or folder by its path; nothing needs to exist there. An empty
/// `std::optional<FolderItem>` is the absent object.
class FolderItem {
 public:
  /// `path`: raw bytes, absolute or relative to the working directory.
  explicit FolderItem(String path) : path_(std::move(path)) {}

  /// The path, raw bytes.
  const String& NativePath() const { return path_; }

  /// False for a path with a zero byte: the system would stop reading there, and use another item.
  bool IsPossible() const { return path_.find('\0') == String::npos; }

  /// The leaf name, raw bytes: the part after the last slash, without slashes at the end. Empty for
  /// the root folder.
  String Name() const;

  /// The item at `name`, a leaf name or relative path, in this folder; nothing needs to exist
  /// there.
  FolderItem Child(std::string_view name) const;

  /// True if anything exists at the path. Follows links. Also true if the system can't tell
  /// (EACCES, for example).
  bool Exists() const;

  /// The path in shell form, which a POSIX shell reads as one word of exactly these bytes: a
  /// backslash before every byte that a shell could interpret, and single quotes around line feeds,
  /// which no backslash protects, and around carriage returns.
  String ShellPath() const;

 private:
  String path_;
};

/// How a path is written.
enum class PathMode { Native = 0, Shell = 1 };

/// The item at the absolute path `path`; nothing needs to exist there. In shell form, backslashes
/// and single quotes are removed as a shell removes them, and all other bytes stand for themselves.
/// Nil for a path that is relative or has a zero byte, and for an unfinished quotation.
std::optional<FolderItem> GetFolderItem(std::string_view path, PathMode mode);

/// The item at `path`, relative to the absolute path `folder`. An absolute `path` is used as it is,
/// as is an empty one, and any path if `folder` is empty. No file is touched: dots and links stay.
FolderItem ItemRelativeTo(std::string_view folder, std::string_view path);

}  // namespace vintrace
