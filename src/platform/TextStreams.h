#pragma once

#include <optional>

#include "platform/BinaryStream.h"
#include "platform/FolderItem.h"

namespace vintrace {

/// The lines of a text file, whose bytes are left as they are. A line ends with a line feed or a
/// carriage return and a line feed; the last may end with the file. Closes itself at the latest
/// when it is destroyed.
class TextInputStream {
 public:
  /// Opens the file at its first line. A nil item raises `NilObjectException`; a file that can't be
  /// opened, or isn't a regular one, raises `IOException`.
  static TextInputStream Open(const std::optional<FolderItem>& item);

  /// The next line, without its end; empty at the end of the file. A read error raises
  /// `IOException`.
  String ReadLine();

  /// True when no text is left to be read, which is so directly behind the end of the last line. A
  /// read error raises `IOException`.
  bool EndOfFile();

  /// Closes the file. No other operation may follow.
  void Close() { stream_.Close(); }

 private:
  explicit TextInputStream(BinaryStream stream) : stream_(std::move(stream)) {}

  /// Reads on. False at the end of the file.
  bool Fill();
  std::size_t Unread() const { return buffer_.size() - next_; }

  BinaryStream stream_;
  String buffer_;         // What has been read of the file,
  std::size_t next_ = 0;  // and from here on hasn't been given out.
};

/// A text file that is being written, whose bytes are those of the texts. They are written in one
/// piece by `Close`. One that is destroyed without it leaves the file empty.
class TextOutputStream {
 public:
  /// Makes the file, for its user and as others may read files of the user's, or empties the one
  /// that is there, in its place. Never waits. A nil item raises `NilObjectException`; a file that
  /// can't be opened for writing raises `IOException`.
  static TextOutputStream Create(const std::optional<FolderItem>& item);

  TextOutputStream(TextOutputStream&& other) noexcept;
  TextOutputStream(const TextOutputStream&) = delete;
  TextOutputStream& operator=(TextOutputStream&&) = delete;
  TextOutputStream& operator=(const TextOutputStream&) = delete;
  ~TextOutputStream();

  void Write(std::string_view text) { text_ += text; }
  /// The text and a line feed.
  void WriteLine(std::string_view text);

  /// Writes everything and closes the file; what can't be written whole raises `IOException`, and
  /// the file holds then what it holds. A second call writes nothing.
  void Close();

 private:
  explicit TextOutputStream(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
  String text_;
};

}  // namespace vintrace
