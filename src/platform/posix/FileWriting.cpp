#include "platform/posix/FileWriting.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/Errno.h"

namespace vintrace::posix {

int OpenForWriting(const String& path, int flags) {
  constexpr mode_t AsTheUserGivesFiles = 0666;  // Less what the umask takes away.
  // A path with a zero byte would reach the system cut short, and so name another file.
  if (path.find('\0') != String::npos) RaiseIOException(ENOENT);
  // O_NONBLOCK: the open of a FIFO would otherwise wait for a reader.
  const int descriptor =
      open(path.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags,
           AsTheUserGivesFiles);
  if (descriptor < 0) RaiseIOException(errno);
  return descriptor;
}

void WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) RaiseIOException(errno);
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void CloseWritten(int descriptor) {
  if (close(descriptor) != 0 && errno != EINTR) RaiseIOException(errno);
}

}  // namespace vintrace::posix
