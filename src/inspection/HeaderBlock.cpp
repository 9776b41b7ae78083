#include "inspection/HeaderBlock.h"

#include <cstdint>

#include "inspection/ByteString.h"
#include "inspection/ReleaseTable.h"

namespace vintrace::inspection {
namespace {

constexpr std::int64_t ByteOrderPosition = 25;
constexpr std::uint8_t BigEndianFlag = 2;
constexpr std::int64_t VersionPositionLittle = 30;
constexpr std::int64_t VersionPositionBig = 33;
constexpr std::int64_t MinorVersionPosition = 34;

}  // namespace

DocumentByteOrder HeaderBlock::ByteOrder() const {
  const bool big = TextEquals(MidB(bytes_, ByteOrderPosition, 1), ChrB(BigEndianFlag));
  return big ? DocumentByteOrder::Big : DocumentByteOrder::Little;
}

std::string_view HeaderBlock::VersionByte() const {
  const bool big = ByteOrder() == DocumentByteOrder::Big;
  return MidB(bytes_, big ? VersionPositionBig : VersionPositionLittle, 1);
}

const VersionRow* HeaderBlock::Row() const {
  return FindRow(VersionByte(), MidB(bytes_, MinorVersionPosition, 1));
}

}  // namespace vintrace::inspection
