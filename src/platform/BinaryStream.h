#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/FolderItem.h"
#include "platform/String.h"

namespace vintrace {

/// The stream of a file's bytes, to be read or to be written. It owns the open file and closes
/// itself at the latest when it is destroyed, and then leaves unsaid what goes wrong. Every other
/// failure raises `IOException`; the stream can still be closed after one.
class BinaryStream {
 public:
  /// Opens the file of `item` at Position 0. Never waits: what isn't a regular file (a folder,
  /// FIFO, socket or device) raises `IOException` at once, as does a file that can't be opened. A
  /// nil item raises `NilObjectException`.
  static BinaryStream Open(const std::optional<FolderItem>& item);

  /// Makes the file of `item`, or empties the one that is there, in its place, to be written from
  /// its beginning. Without `overwrite` one that is there raises. Never waits. A nil item raises
  /// `NilObjectException`.
  static BinaryStream Create(const std::optional<FolderItem>& item, bool overwrite);

  BinaryStream(BinaryStream&& other) noexcept;
  BinaryStream(const BinaryStream&) = delete;
  BinaryStream& operator=(BinaryStream&&) = delete;
  BinaryStream& operator=(const BinaryStream&) = delete;
  ~BinaryStream();

  /// Sets the 0-based offset of the next read. An offset past the end of the file is accepted.
  void SetPosition(std::uint64_t position) { position_ = position; }
  std::uint64_t Position() const { return position_; }

  /// Up to `count` bytes from Position, which moves on by as many. Fewer come only at the end of
  /// the file, none behind it; that is no error.
  String Read(std::size_t count);

  /// Writes all of `bytes` behind what was written before.
  void Write(std::string_view bytes);

  /// True when Position has reached the end of the file: as long as it is at this moment, but not
  /// longer than it was when it was opened, so that one that grows has an end all the same.
  bool AtEOF() const;

  /// Closes the file. Where the system says only now that what was written has no room, that
  /// raises. No operation but `Close` may follow, which does nothing any more.
  void Close();

 private:
  explicit BinaryStream(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
  bool isWritten_ = false;
  std::uint64_t sizeAtOpen_ = 0;
  std::uint64_t position_ = 0;
};

}  // namespace vintrace
