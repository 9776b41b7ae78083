#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/files/Descriptor.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace {

/// A stream of the bytes of a file, for reading or for writing. It owns the open file, and closes
/// it at the latest when it is destroyed; errors of that close are ignored. All other failures
/// raise `IOException`, after which the stream can still be closed.
class BinaryStream {
 public:
  /// Opens the file `item` at Position 0, for writing too if `readWrite`. Never blocks: a folder,
  /// FIFO, socket or device raises `IOException`, like a file that can't be opened. A nil item
  /// raises `NilObjectException`.
  static BinaryStream Open(const std::optional<FolderItem>& item, bool readWrite);

  /// Creates the file `item` with mode 0666 minus the umask, or truncates the existing one in
  /// place, for writing from its start. Without `overwrite`, an existing file raises `IOException`.
  /// Never blocks. A nil item raises `NilObjectException`.
  static BinaryStream Create(const std::optional<FolderItem>& item, bool overwrite);

  /// The 0-based offset of the next `Read`, which may lie past the end of the file. `Write`
  /// advances it too, but doesn't write there.
  void SetPosition(std::uint64_t position) { position_ = position; }
  std::uint64_t Position() const { return position_; }

  /// Up to `count` bytes from Position, which advances by their number. Fewer bytes, or none, mean
  /// the end of the file. `encoding`: none, as the bytes are returned unchanged.
  String Read(std::size_t count, std::nullptr_t encoding);
  /// The same into `bytes`. Returns how many were read.
  std::size_t Read(std::span<char> bytes);

  /// The offset, from Position on, of the next byte that isn't in a hole of a sparse file, where
  /// all bytes are zero; `Length` if there is none. Position if the system can't tell.
  std::uint64_t NextData() const;

  /// Writes all of `bytes` after the bytes written before, the first ones at the file's start.
  /// After a failure, a part of them may be in the file.
  void Write(std::string_view bytes);

  /// The size of the file when it was opened.
  std::uint64_t Length() const { return sizeAtOpen_; }
  /// True if Position has reached the file's end: its present size, or its size when it was opened
  /// if that was smaller, so that a growing file has an end too.
  bool EndOfFile() const;

  /// Closes the file. Some systems report only now that there was no room for written bytes, which
  /// raises `IOException`. After it, only `Close` may be called, which then does nothing.
  void Close();

 private:
  BinaryStream(FolderItem item, int flags);

  FolderItem item_;
  Descriptor descriptor_;
  bool isWritten_;
  std::uint64_t sizeAtOpen_ = 0;
  std::uint64_t position_ = 0;
};

}  // namespace vintrace
