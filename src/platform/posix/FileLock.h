#pragma once

#include "platform/String.h"
#include "platform/posix/Descriptor.h"

namespace vintrace::posix {

/// A file that one process at a time can have locked. The file stays; the lock is free again when
/// the object goes, or the process does.
class FileLock {
 public:
  /// Opens the file at `path`, which is made if there is none.
  explicit FileLock(const String& path);
  FileLock(FileLock&&) noexcept = default;
  FileLock& operator=(FileLock&&) = delete;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock() { Unlock(); }

  /// False when the system refuses the file, or its lock.
  bool Works() const { return static_cast<bool>(file_); }

  /// Tries without waiting. False when another one has it.
  bool TryLock();
  /// Also for children that were started meanwhile and still hold the file.
  void Unlock();

 private:
  Descriptor file_;
};

}  // namespace vintrace::posix
