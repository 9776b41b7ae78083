#pragma once

#include <string_view>

#include "platform/String.h"

namespace vintrace::posix {

/// Makes the file at `path` if it isn't there, for its user and as others may read files of the
/// user's, and opens it for writing without waiting. `flags`: O_TRUNC or O_EXCL. Gives a descriptor
/// that the caller closes; what can't be opened raises `IOException`.
int OpenForWriting(const String& path, int flags);

/// Writes all of `bytes`, in one piece unless the system takes only a part at a time. Raises
/// `IOException`; a part may be written then.
void WriteAll(int descriptor, std::string_view bytes);

/// Closes a file that was written. Some systems tell only now that there was no room; that raises
/// `IOException`, and the file is closed all the same.
void CloseWritten(int descriptor);

}  // namespace vintrace::posix
