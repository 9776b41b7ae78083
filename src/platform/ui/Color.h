#pragma once

#include <cstdint>

namespace vintrace {

/// A colour of three bytes, each 0 (none) to 255 (full).
struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Color&) const = default;
};

constexpr Color RGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return {red, green, blue};
}

inline constexpr Color Black = RGB(0, 0, 0);
inline constexpr Color White = RGB(255, 255, 255);

}  // namespace vintrace
