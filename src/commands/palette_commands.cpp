#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/rounding.h"
#include "commands/handlers.h"
#include "commands/text_notation.h"
#include "drawing/shapes.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr double Margin = 0.95;  // how much of a patch its text may take

Colour ReadableOn(Colour colour) {
  // The weights of the primaries in the brightness of a colour, as television has them (ITU-R BT.601).
  const double brightness = 0.299 * RedOf(colour) + 0.587 * GreenOf(colour) + 0.114 * BlueOf(colour);
  return brightness < 128 ? White : Black;
}

// The values of the colour in one line, or below one another, as the patch has room.
void WriteValues(DrawSurface& surface, const PalettePatch& patch, Point corner, const Font& font) {
  const std::array<std::string, 3> parts = {std::to_string(RedOf(patch.Ink)),
                                            std::to_string(GreenOf(patch.Ink)),
                                            std::to_string(BlueOf(patch.Ink))};
  const std::string whole = parts[0] + " " + parts[1] + " " + parts[2];
  const double roomAcross = Margin * std::abs(patch.Size.X), roomUp = Margin * std::abs(patch.Size.Y);
  const Point middle = corner + patch.Size * 0.5;
  const Colour ink = ReadableOn(patch.Ink);
  const auto write = [&](const std::string& text, double above) {
    WriteText(surface, text, middle + Point{0, above}, {}, font, ink);
  };
  // The longest text decides, so that all patches of a palette are written alike.
  const TextExtent extent = surface.MeasureText("255 255 255", font);
  if (extent.Height() > roomUp) return;
  if (extent.Length <= roomAcross) {
    write(whole, 0);
    return;
  }
  if (3 * extent.Height() > roomUp || surface.MeasureText("255", font).Length > roomAcross) return;
  for (std::size_t i = 0; i < parts.size(); ++i)
    write(parts[i], (1 - static_cast<double>(i)) * extent.Height());
}

using MakePalette = std::vector<PalettePatch> (*)(int number, Point size);

void DrawPalette(RunContext& run, const Parameters& parameters, int most, MakePalette make) {
  const auto number = RoundToInt16(parameters.RequiredNumber(1));
  if (!number || *number < 1 || *number > most) {
    throw ScriptFault(FaultReason::BadNumber, std::to_string(most));
  }
  DrawSurface& surface = run.Surface;
  const Point corner = surface.Current();
  const Font font = FontWith(surface.Font, {});
  const double height = parameters.RequiredNumber(3);
  const Point size = {parameters.RequiredNumber(2), height};
  for (const PalettePatch& patch : make(*number, size)) {
    const Point place = corner + patch.Corner;
    surface.Rectangle(place, place + patch.Size, {patch.Ink, 1}, Fill(patch.Ink));
    WriteValues(surface, patch, place, font);
  }
  surface.MoveTo(corner);
}

}  // namespace

// There are no more hues than a colour has degrees, no more levels than it has values, and no more mixtures
// than can be told apart.
void RunPalCoul(RunContext& run, const Parameters& parameters) {
  DrawPalette(run, parameters, 360, HuePalette);
}

void RunPalCoul2(RunContext& run, const Parameters& parameters) {
  DrawPalette(run, parameters, 256, LightnessPalette);
}

void RunPalCoul3(RunContext& run, const Parameters& parameters) {
  DrawPalette(run, parameters, 32, MixturePalette);
}

}  // namespace vaxel
