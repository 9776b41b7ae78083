#include "commands/open/Wine.h"

#include <algorithm>
#include <system_error>

namespace vintrace::open {
namespace {

namespace fs = std::filesystem;

/// The folder of a prefix's drives: links named like drives, in lower case, such as "c:".
fs::path DrivesOf(const fs::path& prefix) { return prefix / "dosdevices"; }

/// The drive, such as "C:", whose root is `folder`; empty if there is none.
String DriveAt(const fs::path& folder, const fs::path& drives) {
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    std::error_code error;
    const bool same = fs::equivalent(drives / String{letter, ':'}, folder, error);
    if (same && !error) return {static_cast<char>(letter - 'a' + 'A'), ':'};
  }
  return {};
}

String WithBackslashes(String path) {
  std::ranges::replace(path, '/', '\\');
  return path;
}

/// `path` relative to `folder`, a folder above it, with a leading slash.
String Below(const fs::path& folder, const fs::path& path) {
  const auto length = folder == folder.root_path() ? 0 : folder.native().size();
  return path.native().substr(length);
}

}  // namespace

fs::path PrefixOf(const fs::path& program) {
  for (fs::path folder = program.parent_path(); folder.has_relative_path();
       folder = folder.parent_path()) {
    std::error_code error;
    if (folder.filename() == "drive_c" && fs::is_directory(DrivesOf(folder.parent_path()), error)) {
      return folder.parent_path();
    }
  }
  return {};
}

std::optional<String> WindowsPath(const fs::path& path, const fs::path& prefix) {
  if (path.native().find('\\') != String::npos) return std::nullopt;
  const fs::path drives = DrivesOf(prefix);
  std::error_code error;
  if (prefix.empty() || !fs::is_directory(drives, error))
    return "Z:" + WithBackslashes(path.native());
  fs::path folder = path;
  do {
    folder = folder.parent_path();
    const String drive = DriveAt(folder, drives);
    if (!drive.empty()) return drive + WithBackslashes(Below(folder, path));
  } while (folder.has_relative_path());
  return "\\\\?\\unix" + WithBackslashes(path.native());
}

}  // namespace vintrace::open
