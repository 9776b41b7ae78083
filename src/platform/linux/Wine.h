#pragma once

#include <filesystem>
#include <optional>

#include "platform/String.h"

namespace vintrace::open {

/// The Wine prefix, a folder with drives of its own, in whose drive C the program at the absolute
/// path `program` lies; empty when it lies in none.
std::filesystem::path PrefixOf(const std::filesystem::path& program);

/// The absolute path `path` as Windows programs under Wine take it, from the drive of `prefix` that
/// lies deepest above it; without such a drive from the root of the system's own tree, which Wine
/// calls \\?\unix. A prefix that is empty, or that Wine hasn't made yet, counts as one with the
/// drive Z, which is /. Nil for a path with a backslash in it, which Windows has no word for. Bytes
/// stay as they are.
std::optional<String> WindowsPath(const std::filesystem::path& path,
                                  const std::filesystem::path& prefix);

}  // namespace vintrace::open
