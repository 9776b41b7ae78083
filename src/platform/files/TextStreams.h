#pragma once

#include <optional>
#include <string_view>
#include <utility>

#include "platform/files/BinaryStream.h"

namespace vintrace {

/// Reads the lines of a text file, with their bytes unchanged. A line ends with LF or CR LF; the
/// last may end with the file. The stream closes itself at the latest when it is destroyed.
class TextInputStream {
 public:
  /// Opens the file at its first line. Raises like `BinaryStream::Open`.
  static TextInputStream Open(const std::optional<FolderItem>& item);

  /// The next line without its line end; empty at the end of the file. A read error raises
  /// `IOException`.
  String ReadLine();

  /// True if no text is left, also right after the line end of the last line. A read error raises
  /// `IOException`.
  bool EndOfFile();

  /// Closes the file. Nothing may be called after it.
  void Close() { stream_.Close(); }

 private:
  explicit TextInputStream(BinaryStream stream) : stream_(std::move(stream)) {}

  /// Reads more of the file; false at its end.
  bool Fill();
  std::size_t Unread() const { return buffer_.size() - next_; }

  BinaryStream stream_;
  String buffer_;
  std::size_t next_ = 0;  // The offset in `buffer_` of the next line.
};

/// Writes a text file, with the bytes of the texts unchanged. They are collected and written in one
/// piece by `Close`; a stream destroyed without it leaves the file empty.
class TextOutputStream {
 public:
  /// Creates the file, or truncates the existing one in place. Raises like `BinaryStream::Create`.
  static TextOutputStream Create(const std::optional<FolderItem>& item);

  void Write(std::string_view text) { text_ += text; }
  /// Writes the text and LF.
  void WriteLine(std::string_view text);

  /// Writes everything and closes the file. If it can't be written whole, raises `IOException` and
  /// leaves a part of it in the file. A second call writes nothing.
  void Close();

 private:
  explicit TextOutputStream(BinaryStream stream) : stream_(std::move(stream)) {}

  BinaryStream stream_;
  String text_;
};

}  // namespace vintrace
