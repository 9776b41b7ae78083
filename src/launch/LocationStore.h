#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/FolderItem.h"
#include "platform/String.h"

/// The store of application locations: a text file of lines, each the path of one application in
/// shell form. Nothing in a line names a release, and no line is checked: a blank one, a second one
/// of the same path or one that is no path stays where it is.
namespace vintrace::launch {

/// The file's name in the user's folder of application data.
inline constexpr std::string_view SettingsFileName = "VNTR.ini";

/// The lines of `file` in its order, bytes as they are; an empty file has one empty line. A file
/// that isn't there is made empty, and has none. Raises `IOException` when the file can't be read
/// or made.
std::vector<String> LoadLocations(const FolderItem& file);

/// Replaces the whole of `file` by `locations`, each with a line end. Raises `NilObjectException`
/// for a nil file, and `IOException` when it can't be written; the file may then hold anything up
/// to what it was to hold.
void RewriteLocations(const std::optional<FolderItem>& file, const std::vector<String>& locations);

}  // namespace vintrace::launch
