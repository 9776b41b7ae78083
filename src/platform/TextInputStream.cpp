#include <utility>

#include "platform/TextStreams.h"

namespace vintrace {

TextInputStream TextInputStream::Open(const std::optional<FolderItem>& item) {
  return TextInputStream(BinaryStream::Open(item));
}

String TextInputStream::ReadLine() {
  auto end = buffer_.find('\n');
  for (std::size_t searched = buffer_.size(); end == String::npos && Fill();
       searched = buffer_.size()) {
    end = buffer_.find('\n', searched);
  }
  String line = buffer_.substr(0, end);
  buffer_.erase(0, end == String::npos ? end : end + 1);
  if (end != String::npos && line.ends_with('\r')) line.pop_back();
  return line;
}

bool TextInputStream::EndOfFile() { return buffer_.empty() && !Fill(); }

bool TextInputStream::Fill() {
  constexpr std::size_t BlockSize = 65536;
  const String block = stream_.Read(BlockSize);
  buffer_ += block;
  return !block.empty();
}

}  // namespace vintrace
