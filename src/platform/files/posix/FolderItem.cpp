#include "platform/files/FolderItem.h"

#include <sys/stat.h>

#include <cerrno>

namespace vintrace {

bool FolderItem::Exists() const {
  if (!IsPossible()) return false;
  struct stat status {};
  return stat(path_.c_str(), &status) == 0 ||
         (errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG);
}

}  // namespace vintrace
