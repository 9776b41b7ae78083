#include "platform/qt/DroppedFiles.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QSysInfo>
#include <optional>

namespace vintrace::qt {
namespace {

/// What stands behind "file:" in `line`; nothing when it is no such address.
std::optional<QByteArray> BehindScheme(const QByteArray& line) {
  constexpr qsizetype Length = 5;
  if (line.left(Length).compare("file:", Qt::CaseInsensitive) != 0) return std::nullopt;
  return line.mid(Length);
}

bool IsThisHost(const QByteArray& host) {
  return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
         host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

/// The path in what stands behind the scheme (RFC 8089): "//HOST/PATH" or "/PATH".
std::optional<QByteArray> PathOf(const QByteArray& rest) {
  if (!rest.startsWith("//")) return rest;
  const qsizetype path = rest.indexOf('/', 2);
  if (path < 0 || !IsThisHost(rest.mid(2, path - 2))) return std::nullopt;
  return rest.mid(path);
}

std::optional<FolderItem> FileOf(const QByteArray& line) {
  const auto rest = BehindScheme(line);
  const auto encoded = rest ? PathOf(*rest) : std::nullopt;
  if (!encoded) return std::nullopt;
  const QByteArray path = QByteArray::fromPercentEncoding(*encoded);
  if (!path.startsWith('/') || path.contains('\0')) return std::nullopt;
  return FolderItem(path.toStdString());
}

}  // namespace

std::vector<FolderItem> FilesOf(const QByteArray& uriList) {
  std::vector<FolderItem> files;
  for (const QByteArray& line : uriList.split('\n')) {
    if (auto file = FileOf(line.trimmed())) files.push_back(std::move(*file));
  }
  return files;
}

}  // namespace vintrace::qt
