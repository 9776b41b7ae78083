#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace vintrace::qt {

/// One entry of a folder. A link counts as what it leads to.
struct DirectoryItem {
  std::string name;  ///< Raw bytes.
  bool isDirectory = false;
};

/// The folders and regular files in `folder`, hidden ones too: folders first, each kind in natural
/// order ("2" before "10"). FIFOs, sockets, devices and links that lead nowhere are left out. When
/// the folder can't be read, `error` says why and the result is empty.
std::vector<DirectoryItem> ListDirectory(const std::filesystem::path& folder,
                                         std::error_code& error);

/// Which items of a folder are to be seen.
struct ItemFilter {
  std::vector<std::string> suffixes;  ///< A file ends in one, ASCII case ignored; empty: any file.
  bool withHidden = false;            ///< Also names that begin with a dot.

  bool Passes(const DirectoryItem& item) const;
};

/// What is asked of the system only for an item that comes into sight.
struct ItemDetails {
  std::optional<std::uintmax_t> size;  ///< Bytes; only of a regular file.
  std::optional<std::chrono::sys_seconds> modified;
};

/// Whatever can't be read stays empty.
ItemDetails ReadDetails(const std::filesystem::path& path);

}  // namespace vintrace::qt
