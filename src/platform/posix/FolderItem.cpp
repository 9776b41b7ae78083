#include "platform/FolderItem.h"

#include <sys/stat.h>

#include <cerrno>

namespace vintrace {

bool FolderItem::Exists() const {
  struct stat status {};
  // A path with a zero byte would reach the system cut short, and so name another item.
  if (path_.find('\0') != String::npos) return false;
  return stat(path_.c_str(), &status) == 0 ||
         (errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG);
}

}  // namespace vintrace
