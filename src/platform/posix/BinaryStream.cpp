#include "platform/BinaryStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

#include "platform/Exceptions.h"
#include "platform/posix/Errno.h"
#include "platform/posix/FileWriting.h"

namespace vintrace {
namespace {

constexpr int Closed = -1;

struct stat StatusOf(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) posix::RaiseIOException(errno);
  return status;
}

std::uint64_t SizeOf(const struct stat& status) {
  return static_cast<std::uint64_t>(status.st_size);
}

/// Raises unless `status` is of a regular file.
void RequireRegularFile(const struct stat& status) {
  const auto mode = status.st_mode;
  if (S_ISDIR(mode)) posix::RaiseIOException(EISDIR);
  if (!S_ISREG(mode)) throw IOException(EINVAL, "Not a regular file");
}

off_t OffsetOf(std::uint64_t position) {
  if (position > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
    posix::RaiseIOException(EOVERFLOW);
  }
  return static_cast<off_t>(position);
}

std::size_t ReadOnce(int descriptor, char* into, std::size_t count, std::uint64_t position) {
  for (;;) {
    const ssize_t got = pread(descriptor, into, count, OffsetOf(position));
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) posix::RaiseIOException(errno);
  }
}

}  // namespace

BinaryStream BinaryStream::Open(const std::optional<FolderItem>& item) {
  if (!item) throw NilObjectException("the file to open");
  // A path with a zero byte would reach the system cut short, and so name another file.
  if (item->NativePath().find('\0') != String::npos) posix::RaiseIOException(ENOENT);
  // O_NONBLOCK: the open of a FIFO would otherwise wait for a writer.
  const int descriptor =
      open(item->NativePath().c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) posix::RaiseIOException(errno);
  BinaryStream stream(descriptor);
  const struct stat status = StatusOf(descriptor);
  RequireRegularFile(status);
  stream.sizeAtOpen_ = SizeOf(status);
  return stream;
}

BinaryStream BinaryStream::Create(const std::optional<FolderItem>& item, bool overwrite) {
  if (!item) throw NilObjectException("the file to write");
  return BinaryStream(posix::OpenForWriting(item->NativePath(), overwrite ? O_TRUNC : O_EXCL));
}

BinaryStream::BinaryStream(BinaryStream&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, Closed)),
      isWritten_(other.isWritten_),
      sizeAtOpen_(other.sizeAtOpen_),
      position_(other.position_) {}

BinaryStream::~BinaryStream() {
  if (descriptor_ != Closed) close(descriptor_);
}

String BinaryStream::Read(std::size_t count) {
  String bytes(count, '\0');
  std::size_t filled = 0;
  while (filled < count) {
    const std::size_t got = ReadOnce(descriptor_, bytes.data() + filled, count - filled, position_);
    if (got == 0) break;
    filled += got;
    position_ += got;
  }
  bytes.resize(filled);
  return bytes;
}

void BinaryStream::Write(std::string_view bytes) {
  isWritten_ = true;
  posix::WriteAll(descriptor_, bytes);
  position_ += bytes.size();
}

bool BinaryStream::AtEOF() const {
  return position_ >= std::min(sizeAtOpen_, SizeOf(StatusOf(descriptor_)));
}

void BinaryStream::Close() {
  if (descriptor_ == Closed) return;
  const int descriptor = std::exchange(descriptor_, Closed);
  if (isWritten_) {
    posix::CloseWritten(descriptor);
  } else {
    close(descriptor);
  }
}

}  // namespace vintrace
