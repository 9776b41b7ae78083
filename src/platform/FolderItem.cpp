#include "platform/FolderItem.h"

namespace vintrace {

String FolderItem::Name() const {
  const auto last = path_.find_last_not_of('/');
  if (last == String::npos) return {};
  const auto slash = path_.find_last_of('/', last);
  const auto first = slash == String::npos ? 0 : slash + 1;
  return path_.substr(first, last + 1 - first);
}

FolderItem ItemRelativeTo(std::string_view folder, std::string_view path) {
  if (folder.empty() || path.empty() || path.starts_with('/')) return FolderItem(String(path));
  String whole(folder);
  if (!whole.ends_with('/')) whole += '/';
  return FolderItem(whole.append(path));
}

}  // namespace vintrace
