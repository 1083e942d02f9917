// The rulers along the edges of the graphic area.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vaxel {

// In units of 1/96 inch.
inline constexpr int RulerThickness = 18;

enum class RulerMarkLength : std::uint8_t { Short, Middle, Long };

struct RulerMark {
  double Pixel = 0;  // from the area's left or upper edge
  RulerMarkLength Length = RulerMarkLength::Short;
  std::string Text;  // of long ones
};

struct Rulers {
  std::vector<RulerMark> Across, Down;
};

// What a ruler measures: pixel p stands for First + p * PerPixel.
struct RulerScale {
  double First = 0;
  double PerPixel = 1;       // not 0; below 0 where values fall
  double LengthPx = 0;       // of the ruler
  double PixelsPerStep = 4;  // the least distance of two marks
};

// The marks of a ruler, one at each multiple of 1, 10, 100, … or 0.1, 0.01, … that its marks have room for.
// Fives are longer, tens are longest. There are none where the numbers make no sense.
std::vector<RulerMark> RulerMarks(const RulerScale& scale);

}  // namespace vaxel
