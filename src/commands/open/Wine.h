#pragma once

#include <filesystem>
#include <optional>

#include "platform/text/String.h"

namespace vintrace::open {

/// The Wine prefix in whose drive C the program at the absolute path `program` is installed; empty
/// if it is in none.
std::filesystem::path PrefixOf(const std::filesystem::path& program);

/// The absolute path `path` as a Windows path, for programs under Wine: from the drive of `prefix`
/// that is nearest above it, otherwise from the root of Wine's view of the whole system, \\?\unix.
/// An empty prefix, or one that Wine hasn't created yet, has the drive Z for /. Nil for a path with
/// a backslash, which Windows can't express. Bytes are not converted.
std::optional<String> WindowsPath(const std::filesystem::path& path,
                                  const std::filesystem::path& prefix);

}  // namespace vintrace::open
