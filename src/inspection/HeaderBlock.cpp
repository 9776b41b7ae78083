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
constexpr std::int64_t MinorVersionPositionBig = 37;

constexpr std::string_view Signature =
    "\x06\x06\xED\xF5\xD8\x1D\x46\xE5\xBD\x31\xEF\xE7\xFE\x74\xB7\x1D";
/// The start of documents of InDesign 1.5.
constexpr std::string_view EarlySignature("\xDC\0\0\0\x56\0\0\0\x01\0\0\0\x02\0\0\0", 16);

}  // namespace

bool HeaderBlock::HasSignature() const {
  return bytes_.starts_with(Signature) || bytes_.starts_with(EarlySignature);
}

DocumentByteOrder HeaderBlock::ByteOrder() const {
  const bool big = TextEquals(MidB(bytes_, ByteOrderPosition, 1), ChrB(BigEndianFlag));
  return big ? DocumentByteOrder::Big : DocumentByteOrder::Little;
}

std::string_view HeaderBlock::VersionByte() const {
  const bool big = ByteOrder() == DocumentByteOrder::Big;
  return MidB(bytes_, big ? VersionPositionBig : VersionPositionLittle, 1);
}

std::string_view HeaderBlock::MinorVersionByte() const {
  const bool big = ByteOrder() == DocumentByteOrder::Big;
  return MidB(bytes_, big ? MinorVersionPositionBig : MinorVersionPosition, 1);
}

const VersionRow* HeaderBlock::Row() const {
  return FindRow(VersionByte(), MidB(bytes_, MinorVersionPosition, 1));
}

}  // namespace vintrace::inspection
