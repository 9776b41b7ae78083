#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/files/FolderItem.h"
#include "platform/process/posix/Process.h"
#include "platform/text/String.h"

namespace vintrace::open {

/// The Wine prefix in whose drive C the program at the absolute path `program` is installed; empty
/// if it is in none.
std::filesystem::path PrefixOf(const std::filesystem::path& program);

/// The absolute path `path` as a Windows path, for programs under Wine: from the drive of `prefix`
/// that is nearest above it, otherwise from the root of Wine's view of the whole system, \\?\unix.
/// An empty prefix, or one that Wine hasn't created yet, has the drive Z for /. A path with a name
/// that Windows refuses (such as "CON.indd" or "a?.indd") is taken from \\?\unix, whose names
/// aren't checked. Nil for a path with a backslash, which Windows can't express. Bytes are not
/// converted.
std::optional<String> WindowsPath(const std::filesystem::path& path,
                                  const std::filesystem::path& prefix);

/// Wine's name for the kind of processor that the Windows executable `program` is made for, such as
/// "i386", from the machine field of its header (Microsoft's PE Format, "COFF File Header"). Empty
/// for other kinds, and for a DOS program. Nil if the file is no Windows program. Raises
/// `IOException` if it can't be read.
std::optional<std::string_view> ProcessorOf(const FolderItem& program);

/// False if the Wine that `environment` finds on its PATH lacks the libraries for programs of the
/// kind `processor`: a 64-bit Wine starts for a 32-bit program too, and then ends without a word.
/// True if it can't be told where the libraries are.
bool WineRuns(std::string_view processor, const posix::ProcessEnvironment& environment);

/// Sets a UTF-8 locale for characters if `environment` has another one, in the same language if it
/// is installed. Wine converts the names of files by it.
void UseUTF8(posix::ProcessEnvironment& environment);

}  // namespace vintrace::open
