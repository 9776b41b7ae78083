#include "platform/ui/qt/FileAddress.h"

#include <QList>
#include <QString>
#include <QSysInfo>
#include <utility>

namespace vintrace::qt {
namespace {

constexpr const char* Scheme = "file:";

bool IsThisHost(const QByteArray& host) {
  return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
         host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

/// The path in the part after the scheme: "//HOST/PATH" or "/PATH".
std::optional<QByteArray> PathOf(const QByteArray& rest) {
  if (!rest.startsWith("//")) return rest;
  const qsizetype path = rest.indexOf('/', 2);
  if (path < 0 || !IsThisHost(rest.mid(2, path - 2))) return std::nullopt;
  return rest.mid(path);
}

}  // namespace

QByteArray AddressOf(const FolderItem& item) {
  return QByteArray(Scheme) + "//" +
         QByteArray::fromStdString(item.NativePath()).toPercentEncoding("/");
}

std::optional<FolderItem> FileAt(const QByteArray& address) {
  const auto length = static_cast<qsizetype>(qstrlen(Scheme));
  if (address.left(length).compare(Scheme, Qt::CaseInsensitive) != 0) return std::nullopt;
  const auto path = PathOf(address.mid(length));
  if (!path) return std::nullopt;
  return GetFolderItem(QByteArray::fromPercentEncoding(*path).toStdString(), PathMode::Native);
}

std::vector<FolderItem> FilesOf(const QByteArray& uriList) {
  std::vector<FolderItem> files;
  for (const QByteArray& line : uriList.split('\n')) {
    if (auto file = FileAt(line.trimmed())) files.push_back(std::move(*file));
  }
  return files;
}

}  // namespace vintrace::qt
