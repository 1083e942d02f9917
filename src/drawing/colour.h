// Colours as numbers.
#pragma once

#include <cstdint>

namespace vaxel {

// A 24-bit colour, red in the low byte, blue in the high one.
using Colour = std::uint32_t;

constexpr Colour MakeColour(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
  return red | green << 8 | blue << 16;
}
constexpr std::uint32_t RedOf(Colour colour) {
  return colour & 0xFF;
}
constexpr std::uint32_t GreenOf(Colour colour) {
  return colour >> 8 & 0xFF;
}
constexpr std::uint32_t BlueOf(Colour colour) {
  return colour >> 16 & 0xFF;
}

inline constexpr Colour Black = 0;
inline constexpr Colour White = 0xFFFFFF;

}  // namespace vaxel
