#include "platform/files/TextStreams.h"

#include <utility>

namespace vintrace {

TextInputStream TextInputStream::Open(const std::optional<FolderItem>& item) {
  return TextInputStream(BinaryStream::Open(item, false));
}

String TextInputStream::ReadLine() {
  auto end = buffer_.find('\n', next_);
  for (auto searched = Unread(); end == String::npos && Fill(); searched = Unread()) {
    end = buffer_.find('\n', next_ + searched);
  }
  String line = buffer_.substr(next_, end - next_);
  next_ = end == String::npos ? buffer_.size() : end + 1;
  if (end != String::npos && line.ends_with('\r')) line.pop_back();
  return line;
}

bool TextInputStream::EndOfFile() { return Unread() == 0 && !Fill(); }

bool TextInputStream::Fill() {
  constexpr std::size_t BlockSize = 65536;
  const String block = stream_.Read(BlockSize, nullptr);
  buffer_.erase(0, std::exchange(next_, 0));
  buffer_ += block;
  return !block.empty();
}

TextOutputStream TextOutputStream::Create(const std::optional<FolderItem>& item) {
  return TextOutputStream(BinaryStream::Create(item, true));
}

void TextOutputStream::WriteLine(std::string_view text) {
  Write(text);
  Write("\n");
}

void TextOutputStream::Close() {
  if (const String text = std::exchange(text_, {}); !text.empty()) stream_.Write(text);
  stream_.Close();
}

}  // namespace vintrace
