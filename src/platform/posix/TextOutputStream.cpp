#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/Exceptions.h"
#include "platform/TextStreams.h"
#include "platform/posix/Errno.h"

namespace vintrace {
namespace {

constexpr int Closed = -1;
constexpr mode_t AsTheUserGivesFiles = 0666;  // Less what the umask takes away.

/// Writes all of `text`, in one piece unless the system takes only a part at a time.
void WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) posix::RaiseIOException(errno);
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace

TextOutputStream TextOutputStream::Create(const std::optional<FolderItem>& item) {
  if (!item) throw NilObjectException("the file to write");
  if (item->NativePath().find('\0') != String::npos) posix::RaiseIOException(ENOENT);
  // O_NONBLOCK: the open of a FIFO would otherwise wait for a reader.
  constexpr int Flags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const int descriptor = open(item->NativePath().c_str(), Flags, AsTheUserGivesFiles);
  if (descriptor < 0) posix::RaiseIOException(errno);
  return TextOutputStream(descriptor);
}

TextOutputStream::TextOutputStream(TextOutputStream&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, Closed)), text_(std::move(other.text_)) {}

TextOutputStream::~TextOutputStream() {
  if (descriptor_ != Closed) close(descriptor_);
}

void TextOutputStream::WriteLine(std::string_view text) {
  Write(text);
  Write("\n");
}

void TextOutputStream::Close() {
  if (descriptor_ == Closed) return;
  WriteAll(descriptor_, text_);
  // Some systems tell only now that there was no room.
  if (close(std::exchange(descriptor_, Closed)) != 0 && errno != EINTR) {
    posix::RaiseIOException(errno);
  }
}

}  // namespace vintrace
