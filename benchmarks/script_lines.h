// Scripts of many lines, and their way into a display list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "drawing/display_list.h"

namespace vaxel {

enum class LineKind : std::uint8_t {
  Stroke,        // "Trait = x0, y0, x1, y1"
  SquareStroke,  // the same with square ends: each draws a polygon of four corners
  Step,          // "Trait = , , x, y"
  Text,          // "Texte = x, y, , , text": as many numbers as a step
  Mark,          // a hundredth of "Grad = 99, 5"
  Value          // a hundredth of "Val = 99, 0, 49.5, 5"
};

// A script that draws so many strokes, texts, marks or values; of the last two whole hundreds. Coordinates
// are plain decimal numbers. The same text every time.
std::string ScriptOf(LineKind kind, std::size_t count);

// Ends the program when there is no such file.
std::string ReadScript(const std::string& fileName);

// Ends the program when the script has a fault: what was measured would be nothing.
void RunInto(DisplayList& list, std::string script);

}  // namespace vaxel
