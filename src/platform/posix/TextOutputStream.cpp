#include <fcntl.h>
#include <unistd.h>

#include <string_view>
#include <utility>

#include "platform/Exceptions.h"
#include "platform/TextStreams.h"
#include "platform/posix/FileWriting.h"

namespace vintrace {
namespace {

constexpr int Closed = -1;

}  // namespace

TextOutputStream TextOutputStream::Create(const std::optional<FolderItem>& item) {
  if (!item) throw NilObjectException("the file to write");
  return TextOutputStream(posix::OpenForWriting(item->NativePath(), O_TRUNC));
}

TextOutputStream::TextOutputStream(TextOutputStream&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, Closed)), text_(std::move(other.text_)) {}

TextOutputStream::~TextOutputStream() {
  if (descriptor_ != Closed) close(descriptor_);
}

void TextOutputStream::WriteLine(std::string_view text) {
  Write(text);
  Write("\n");
}

void TextOutputStream::Close() {
  if (descriptor_ == Closed) return;
  posix::WriteAll(descriptor_, std::exchange(text_, {}));
  posix::CloseWritten(std::exchange(descriptor_, Closed));
}

}  // namespace vintrace
