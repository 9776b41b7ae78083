#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

/// The store of application locations: a text file, and its lines in memory. Each line is the path
/// of one application in shell form, oldest first. Lines name no release and are not checked: blank
/// lines, duplicates and lines that are not paths are kept.
namespace vintrace::launch {

/// The file's name in the user's folder for application data.
inline constexpr std::string_view SettingsFileName = "VNTR.ini";

/// Appends the lines of `file` to `locations`, in order; an empty file has one empty line. A
/// missing file is created empty and has none. Raises `IOException` if the file can't be read or
/// created; the lines before the error are in `locations` then.
void LoadLocations(const FolderItem& file, std::vector<String>& locations);

/// The index of the first location whose path, folders included, contains `product`; nil if there
/// is none. Ignores ASCII case and word boundaries: a path of CS5.5 contains "Adobe InDesign
/// CS5". `product` must not be empty.
std::optional<std::int64_t> FindLocation(const std::vector<String>& locations,
                                         std::string_view product);

/// Replaces the contents of `file` by `locations`, each with a line end. A location with a line
/// feed would be two lines, and is left out. Raises `NilObjectException` for a nil file, and
/// `IOException` if it can't be written; the file may hold a part of `locations` then.
void RewriteLocations(const std::optional<FolderItem>& file, const std::vector<String>& locations);

}  // namespace vintrace::launch
