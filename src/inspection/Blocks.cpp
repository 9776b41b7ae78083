#include "inspection/Blocks.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "inspection/ByteString.h"

namespace vintrace::inspection {
namespace {

constexpr std::size_t Size = 6144;
constexpr std::size_t Stride = 4096;

/// The start of the first block that reaches the offset `end`; both from the start of a block.
std::uint64_t FirstBlockUpTo(std::uint64_t end) {
  return end <= Size ? 0 : (end - Size + Stride - 1) / Stride * Stride;
}

}  // namespace

std::string_view Blocks::Next() {
  do {
    begin_ += std::exchange(step_, Stride);
    while (begin_ + Size > end_ && !isEnded_) Fill();
  } while (!IsLast() && InStrB(0, Block(), delimiter_) == 0);
  return Block();
}

bool Blocks::IsLast() const { return isEnded_ && begin_ + Size >= end_; }

std::string_view Blocks::Block() const {
  return std::string_view(buffer_).substr(begin_, std::min(Size, end_ - begin_));
}

// Reads on from the current block, or from the first after it that reaches beyond a hole. Then
// moves on to the first block that may have a delimiter.
void Blocks::Fill() {
  constexpr std::size_t Growth = 8;
  constexpr std::size_t LargestPiece = 262144;
  const bool isFirst = buffer_.empty();
  offset_ += begin_;
  stream_.SetPosition(offset_);
  const std::uint64_t hole = isFirst ? 0 : FirstBlockUpTo(stream_.NextData() - offset_);
  offset_ += hole;
  const std::size_t kept = hole > 0 ? 0 : end_ - begin_;
  std::memmove(buffer_.data(), buffer_.data() + begin_, kept);
  buffer_.resize(isFirst ? Size : std::min(buffer_.size() * Growth, LargestPiece));
  stream_.SetPosition(offset_ + kept);
  const std::uint64_t left = stream_.Length() - std::min(offset_ + kept, stream_.Length());
  const auto room = static_cast<std::size_t>(std::min<std::uint64_t>(left, buffer_.size() - kept));
  end_ = kept + stream_.Read(std::span(buffer_).subspan(kept, room));
  isEnded_ = end_ < buffer_.size() || offset_ + end_ >= stream_.Length();
  const bool mayHave = InStrB(0, std::string_view(buffer_).substr(0, end_), delimiter_) > 0;
  begin_ = mayHave ? 0 : static_cast<std::size_t>(FirstBlockUpTo(isEnded_ ? end_ : end_ + 1));
}

}  // namespace vintrace::inspection
