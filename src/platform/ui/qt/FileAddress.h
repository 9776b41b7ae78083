#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "platform/files/FolderItem.h"

namespace vintrace::qt {

/// The `file:` address (RFC 8089) of an item with an absolute path. All bytes of the path but
/// unreserved ASCII characters and slashes are percent-encoded, valid UTF-8 or not.
QByteArray AddressOf(const FolderItem& item);

/// The file of this computer that an address names, as the bytes of its path; nil for other schemes
/// and hosts, and for paths that no file can have.
std::optional<FolderItem> FileAt(const QByteArray& address);

/// The files in a list of addresses, one a line (text/uri-list; RFC 2483, section 5), in its order.
/// Lines that name no file, such as comments, are left out.
std::vector<FolderItem> FilesOf(const QByteArray& uriList);

}  // namespace vintrace::qt
