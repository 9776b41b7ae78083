#include "platform/text/Encodings.h"

#include <cstddef>
#include <cstdint>

namespace vintrace {
namespace {

String Hex(std::string_view bytes, std::string_view digits) {
  String hex;
  for (const char each : bytes) {
    const auto byte = static_cast<unsigned char>(each);
    hex += digits[byte >> 4];
    hex += digits[byte & 0xF];
  }
  return hex;
}

}  // namespace

String EncodeBase64(std::string_view bytes) {
  constexpr std::string_view Alphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto byte = [&](std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : std::uint32_t{0};
  };
  String text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::uint32_t group = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
    text += Alphabet[group >> 18];
    text += Alphabet[group >> 12 & 0x3F];
    text += i + 1 < bytes.size() ? Alphabet[group >> 6 & 0x3F] : '=';
    text += i + 2 < bytes.size() ? Alphabet[group & 0x3F] : '=';
  }
  return text;
}

String _EncodeHex(std::string_view bytes) { return Hex(bytes, "0123456789abcdef"); }

String EncodeUpperHex(std::string_view bytes) { return Hex(bytes, "0123456789ABCDEF"); }

}  // namespace vintrace
