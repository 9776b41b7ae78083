#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "platform/files/FolderItem.h"

namespace vintrace::qt {

/// The `file:` address (RFC 8089) of an item with an absolute path. All bytes of the path except
/// unreserved ASCII characters and slashes are percent-encoded, valid UTF-8 or not.
QByteArray AddressOf(const FolderItem& item);

/// The local file that an address names, whose path may be any bytes. Nil for other schemes and
/// hosts, and for paths that are relative or have a zero byte.
std::optional<FolderItem> FileAt(const QByteArray& address);

/// The files in a list of addresses, one per line (text/uri-list; RFC 2483, section 5), in order.
/// Lines that name no file, such as comments, are skipped.
std::vector<FolderItem> FilesOf(const QByteArray& uriList);

}  // namespace vintrace::qt
