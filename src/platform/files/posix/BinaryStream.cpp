#include "platform/files/BinaryStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

#include "platform/files/posix/Errno.h"
#include "platform/text/Exceptions.h"

namespace vintrace {
namespace {

using posix::RaiseIOException;

struct stat StatusOf(const Descriptor& file, const FolderItem& item) {
  struct stat status {};
  if (fstat(file.Number(), &status) != 0) RaiseIOException(errno, item.NativePath());
  return status;
}

std::uint64_t SizeOf(const struct stat& status) {
  return static_cast<std::uint64_t>(status.st_size);
}

void RequireRegularFile(const struct stat& status, const FolderItem& item) {
  const String& path = item.NativePath();
  if (S_ISDIR(status.st_mode)) RaiseIOException(EISDIR, path);
  if (!S_ISREG(status.st_mode)) throw IOException(EINVAL, path + ": Not a regular file");
}

constexpr auto LastPosition = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());

}  // namespace

Descriptor::~Descriptor() {
  if (IsOpen()) close(number_);
}

BinaryStream::BinaryStream(FolderItem item, int flags)
    : item_(std::move(item)), isWritten_((flags & O_ACCMODE) != O_RDONLY) {
  constexpr mode_t ModeBeforeUmask = 0666;
  if (!item_.IsPossible()) RaiseIOException(ENOENT, item_.NativePath());
  // O_NONBLOCK: opening a FIFO would otherwise wait for its other end.
  descriptor_ = Descriptor(
      open(item_.NativePath().c_str(), O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags, ModeBeforeUmask));
  if (!descriptor_.IsOpen()) RaiseIOException(errno, item_.NativePath());
}

BinaryStream BinaryStream::Open(const std::optional<FolderItem>& item, bool readWrite) {
  if (!item) throw NilObjectException("the file to open");
  BinaryStream stream(*item, readWrite ? O_RDWR : O_RDONLY);
  const struct stat status = StatusOf(stream.descriptor_, *item);
  RequireRegularFile(status, *item);
  stream.sizeAtOpen_ = SizeOf(status);
  return stream;
}

BinaryStream BinaryStream::Create(const std::optional<FolderItem>& item, bool overwrite) {
  if (!item) throw NilObjectException("the file to write");
  return {*item, O_WRONLY | O_CREAT | (overwrite ? O_TRUNC : O_EXCL)};
}

String BinaryStream::Read(std::size_t count, std::nullptr_t /*encoding*/) {
  String bytes(count, '\0');
  bytes.resize(Read(bytes));
  return bytes;
}

std::size_t BinaryStream::Read(std::span<char> bytes) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    if (position_ > LastPosition) RaiseIOException(EOVERFLOW, item_.NativePath());
    const ssize_t got = pread(descriptor_.Number(), bytes.data() + filled, bytes.size() - filled,
                              static_cast<off_t>(position_));
    if (got == 0) break;
    if (got < 0 && errno != EINTR) RaiseIOException(errno, item_.NativePath());
    if (got < 0) continue;
    filled += static_cast<std::size_t>(got);
    position_ += static_cast<std::uint64_t>(got);
  }
  return filled;
}

std::uint64_t BinaryStream::NextData() const {
  if (position_ > LastPosition) return position_;
  const off_t data = lseek(descriptor_.Number(), static_cast<off_t>(position_), SEEK_DATA);
  const std::uint64_t end = std::max(position_, Length());
  if (data >= 0) return std::min(static_cast<std::uint64_t>(data), end);
  return errno == ENXIO ? end : position_;
}

void BinaryStream::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor_.Number(), bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) RaiseIOException(errno, item_.NativePath());
    if (written < 0) continue;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    position_ += static_cast<std::uint64_t>(written);
  }
}

bool BinaryStream::EndOfFile() const {
  return position_ >= std::min(sizeAtOpen_, SizeOf(StatusOf(descriptor_, item_)));
}

void BinaryStream::Close() {
  if (!descriptor_.IsOpen()) return;
  const bool closed = close(descriptor_.Release()) == 0;
  if (isWritten_ && !closed && errno != EINTR) RaiseIOException(errno, item_.NativePath());
}

}  // namespace vintrace
