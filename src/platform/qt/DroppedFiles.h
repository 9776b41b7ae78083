#pragma once

#include <vector>

#include "platform/FolderItem.h"

class QByteArray;

namespace vintrace::qt {

/// The files of this computer that a list of addresses names (RFC 2483, section 5: text/uri-list),
/// in its order, as the bytes of their paths. What names no file here is left out: other schemes
/// and hosts, comments, and paths that no file can have.
std::vector<FolderItem> FilesOf(const QByteArray& uriList);

}  // namespace vintrace::qt
