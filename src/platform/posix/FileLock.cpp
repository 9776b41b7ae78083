#include "platform/posix/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace vintrace::posix {
namespace {

int OpenLockFile(const String& path) {
  constexpr int Flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
  for (;;) {
    const int file = open(path.c_str(), Flags, S_IRUSR | S_IWUSR);
    if (file >= 0 || errno != EINTR) return file;
  }
}

}  // namespace

FileLock::FileLock(const String& path) : file_(OpenLockFile(path)) {}

bool FileLock::TryLock() {
  if (!Works()) return false;
  while (flock(file_.Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) file_ = Descriptor();
    return false;
  }
  return true;
}

void FileLock::Unlock() {
  if (Works()) flock(file_.Number(), LOCK_UN);
}

}  // namespace vintrace::posix
