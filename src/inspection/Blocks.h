#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/files/BinaryStream.h"
#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// The blocks of a document: at most 6144 bytes from offset 40960, and then from every 4096th. The
/// last block is the first that reaches the end of the file, and may be empty. The file is read in
/// pieces that grow from one block to 256 KB, each byte once, and holes not at all.
class Blocks {
 public:
  /// Opens the document `item`. `delimiter` must outlive this object.
  Blocks(const FolderItem& item, std::string_view delimiter)
      : stream_(BinaryStream::Open(item, false)), delimiter_(delimiter) {}

  /// The next block with the delimiter, or else the last block; valid until the next call. Not to
  /// be called after the last block. Raises `IOException` if the file can't be read.
  std::string_view Next();

  /// True if the block that `Next` gave is the document's last one.
  bool IsLast() const;

 private:
  static constexpr std::uint64_t FirstOffset = 40960;

  std::string_view Block() const;
  void Fill();

  BinaryStream stream_;
  std::string_view delimiter_;
  String buffer_;  // The bytes of the file from `offset_` on, read up to `end_`.
  std::uint64_t offset_ = FirstOffset;
  std::size_t begin_ = 0;  // Of the current block in `buffer_`.
  std::size_t end_ = 0;
  std::size_t step_ = 0;  // From the current block to the next.
  bool isEnded_ = false;
};

}  // namespace vintrace::inspection
