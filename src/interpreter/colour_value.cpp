#include "interpreter/colour_value.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "base/rounding.h"
#include "base/text.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

struct NamedColour {
  std::string_view Name;
  Colour Value;
};

constexpr std::array<NamedColour, 15> NamedColours = {{
    {"NOIR", Black},
    {"BLACK", Black},
    {"ROUGE", 255},
    {"RED", 255},
    {"VERT", 65280},
    {"GREEN", 65280},
    {"JAUNE", 65535},
    {"YELLOW", 65535},
    {"BLEU", 16711680},
    {"BLUE", 16711680},
    {"CYAN", 16776960},
    // It is the same as cyan: scripts exist that were printed so.
    {"VIOLET", 16776960},
    {"MAGENTA", 16711935},
    {"BLANC", White},
    {"WHITE", White},
}};

std::uint32_t ColourPart(std::string_view text) {
  const auto value = RoundToInt16(LeadingNumber(text));
  if (!value) throw ScriptFault(FaultReason::Overflow);
  return static_cast<std::uint32_t>(std::clamp<int>(*value, 0, 255));
}

// Three values separated by blanks or by the separator; a missing one is 0.
Colour ColourOfParts(std::string_view rest, std::string_view separator) {
  std::array<std::uint32_t, 3> parts{};
  for (std::uint32_t& part : parts) {
    rest = TrimLeft(rest);
    const std::size_t end = std::min({rest.size(), rest.find(' '), rest.find(separator)});
    part = ColourPart(rest.substr(0, end));
    rest = TrimLeft(rest.substr(end));
    if (rest.starts_with(separator)) rest.remove_prefix(separator.size());
  }
  return MakeColour(parts[0], parts[1], parts[2]);
}

}  // namespace

std::optional<Colour> ColourValue(std::string_view text, const Separators& separators) {
  text = Trim(text);
  if (text.empty()) return std::nullopt;
  const std::string upper = UpperCase(text);
  std::string_view name = upper;
  name = name.substr(0, name.find(separators.First));
  const std::size_t part = name.find(separators.Second);
  name = Trim(name.substr(0, part != std::string_view::npos ? part : name.find('/')));
  for (const NamedColour& named : NamedColours) {
    if (!name.empty() && name == named.Name) return named.Value;
  }
  if (upper.starts_with("RGB") || upper.starts_with("RVB")) {
    return ColourOfParts(std::string_view(upper).substr(3), separators.First);
  }
  return std::nullopt;
}

std::string ColourText(Colour colour) {
  const auto* const named = std::find_if(NamedColours.begin(), NamedColours.end(),
                                         [&](const NamedColour& row) { return row.Value == colour; });
  if (named != NamedColours.end()) {
    std::string name(named->Name);
    std::transform(name.begin() + 1, name.end(), name.begin() + 1,
                   [](char c) { return static_cast<char>(c - 'A' + 'a'); });
    return name;
  }
  return "RVB " + std::to_string(colour & 0xFF) + " " + std::to_string(colour >> 8 & 0xFF) + " " +
         std::to_string(colour >> 16 & 0xFF);
}

}  // namespace vaxel
