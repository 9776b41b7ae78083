#include "platform/FolderItem.h"

#include <sys/stat.h>

namespace vintrace {

bool FolderItem::Exists() const {
  struct stat status {};
  // A path with a zero byte would reach the system cut short, and so name another item.
  return path_.find('\0') == String::npos && stat(path_.c_str(), &status) == 0;
}

}  // namespace vintrace
