#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/FolderItem.h"
#include "platform/String.h"

/// The store of application locations: a text file of lines, each the path of one application in
/// shell form, oldest first, and their copy in memory. Nothing in a line names a release, and no
/// line is checked: a blank one, a second one of the same path or one that is no path stays where
/// it is.
namespace vintrace::launch {

/// The file's name in the user's folder of application data.
inline constexpr std::string_view SettingsFileName = "VNTR.ini";

/// The lines of `file` in its order; an empty file has one empty line. A file that isn't there is
/// made empty, and has none. Raises `IOException`, whose reason names the file, when that can't be
/// read or made.
std::vector<String> LoadLocations(const FolderItem& file);

/// The index of the first of `locations` whose path, folders included, has `product` in it, a text
/// that isn't empty. ASCII case doesn't count, nor where a word ends: "Adobe InDesign CS5" is also
/// in the path of CS5.5. Nil when there is none.
std::optional<std::int64_t> FindLocation(const std::vector<String>& locations,
                                         std::string_view product);

/// Puts `location` at the end, and rewrites `file`.
void AddLocation(const std::optional<FolderItem>& file, std::vector<String>& locations,
                 const String& location);
/// Takes out the element `index`, which there is, and rewrites `file`.
void RemoveLocation(const std::optional<FolderItem>& file, std::vector<String>& locations,
                    std::int64_t index);

/// Replaces the whole of `file` by `locations`, each with a line end. Raises `NilObjectException`
/// for a nil file, and `IOException` when it can't be written; the file may then hold anything up
/// to what it was to hold, and `locations` keeps the change that led here.
void RewriteLocations(const std::optional<FolderItem>& file, const std::vector<String>& locations);

}  // namespace vintrace::launch
