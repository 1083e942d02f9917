#include "drawing/standard_faces.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "base/text.h"
#include "base/utf8.h"

namespace vaxel {
namespace {

#include "drawing/standard_faces.def"

constexpr double UnitsPerSize = 2048;

// The families stand in the order of the tables.
constexpr std::array<StandardFamily, 3> Families = {
    {{"Times New Roman", {"Liberation Serif", "Tinos"}, "serif"},
     {"Arial", {"Liberation Sans", "Arimo"}, "sans-serif"},
     {"Courier New", {"Liberation Mono", "Cousine"}, "monospace"}}};

}  // namespace

FaceMetrics FaceTable::Metrics() const {
  return {Ascent / UnitsPerSize, Descent / UnitsPerSize, UnderlinePosition / UnitsPerSize,
          UnderlineThickness / UnitsPerSize};
}

std::optional<std::uint16_t> FaceTable::WidthOf(char32_t character) const {
  const auto widthIn = [&](const CharacterRange& range) -> std::optional<std::uint16_t> {
    const std::size_t index = character - range.First;
    if (character < range.First || index >= range.Count) return std::nullopt;
    return Widths[range.Offset + index];
  };
  // Nearly all characters of a dial are in the first range.
  if (const auto width = widthIn(Ranges.front())) return width;
  const auto behind =
      std::upper_bound(Ranges.begin(), Ranges.end(), character,
                       [](char32_t c, const CharacterRange& range) { return c < range.First; });
  return behind == Ranges.begin() ? std::nullopt : widthIn(*std::prev(behind));
}

std::optional<double> FaceTable::Width(std::string_view text) const {
  std::uint64_t sum = 0;
  while (!text.empty()) {
    const auto width = WidthOf(TakeCharacter(text));
    if (!width) return std::nullopt;
    sum += *width;
  }
  return static_cast<double>(sum) / UnitsPerSize;
}

const StandardFamily* FindStandardFamily(std::string_view name) {
  const auto* family = std::find_if(Families.begin(), Families.end(), [&](const StandardFamily& known) {
    return EqualIgnoringCase(known.Name, name);
  });
  return family == Families.end() ? nullptr : family;
}

const FaceTable* StandardFace(const FontFace& face) {
  const StandardFamily* family = FindStandardFamily(face.Name);
  if (!family) return nullptr;
  const auto index = static_cast<std::size_t>(family - Families.data());
  return &FaceTables[index * 4 + (face.Bold ? 1U : 0U) + (face.Italic ? 2U : 0U)];
}

FaceMetrics StandInMeasurer::Metrics(const FontFace& face) {
  return StandardFace({"Arial", face.Bold, face.Italic})->Metrics();
}

double StandInMeasurer::Width(const FontFace& face, std::string_view text) {
  const FaceTable* own = StandardFace(face);
  const FaceTable& table = own ? *own : *StandardFace({"Arial", face.Bold, face.Italic});
  double width = 0;
  while (!text.empty()) {
    const std::string_view before = text;
    TakeCharacter(text);
    width += table.Width(before.substr(0, before.size() - text.size())).value_or(1);
  }
  return width;
}

std::string StandInMeasurer::Replacement(const FontFace&) {
  return "Arial";
}

}  // namespace vaxel
