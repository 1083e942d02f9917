#include "interpreter/colour_value.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "base/rounding.h"
#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::array<NamedColour, 28> NamedColours = {{
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
    {"ORANGE", MakeColour(255, 165, 0)},
    {"GRIS", MakeColour(128, 128, 128)},
    {"GRAY", MakeColour(128, 128, 128)},
    {"MARRON", MakeColour(165, 42, 42)},
    {"BROWN", MakeColour(165, 42, 42)},
    {"ROSE", MakeColour(255, 192, 203)},
    {"PINK", MakeColour(255, 192, 203)},
    {"OR", MakeColour(255, 215, 0)},
    {"GOLD", MakeColour(255, 215, 0)},
    {"IVOIRE", MakeColour(255, 255, 240)},
    {"IVORY", MakeColour(255, 255, 240)},
    {"ARGENT", MakeColour(192, 192, 192)},
    {"SILVER", MakeColour(192, 192, 192)},
}};

struct PartReading {
  std::uint32_t Value = 0;
  bool IsExpression = true;
};

// A text that is no expression is worth the number that it begins with.
PartReading ReadPart(std::string_view text, std::string_view separator) {
  const Evaluation evaluation = Evaluate(text, separator);
  const bool isExpression = evaluation.Complete;
  const auto value = RoundToInt16(isExpression ? evaluation.Value : LeadingNumber(text));
  if (!value) throw ScriptFault(FaultReason::Overflow);
  return {static_cast<std::uint32_t>(std::clamp<int>(*value, 0, 255)), isExpression};
}

// The length of the part at the start of the text: up to a blank or a separator outside parentheses.
std::size_t PartLength(std::string_view text, std::string_view separator) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')') --depth;
    if (depth <= 0 && (text[i] == ' ' || text.substr(i).starts_with(separator))) return i;
  }
  return text.size();
}

// Three values separated by blanks or by the separator; a missing one is 0.
ColourReading ReadColourParts(std::string_view rest, std::string_view separator) {
  std::array<std::uint32_t, 3> values{};
  bool isDoubtful = false;
  for (std::uint32_t& value : values) {
    rest = TrimLeft(rest);
    const std::size_t length = PartLength(rest, separator);
    const PartReading part = ReadPart(rest.substr(0, length), separator);
    value = part.Value;
    isDoubtful = isDoubtful || !part.IsExpression;
    rest = TrimLeft(rest.substr(length));
    if (rest.starts_with(separator)) rest.remove_prefix(separator.size());
  }
  return {MakeColour(values[0], values[1], values[2]), isDoubtful};
}

// "#RRGGBB", in upper case.
std::optional<Colour> HexColour(std::string_view text, const Separators& separators) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  if (text.size() != 7 || !text.starts_with('#')) return std::nullopt;
  if (separators.First == "#" || separators.Second == "#") return std::nullopt;
  std::uint32_t value = 0;
  for (char digit : text.substr(1)) {
    const std::size_t place = digits.find(digit);
    if (place == std::string_view::npos) return std::nullopt;
    value = value * 16 + static_cast<std::uint32_t>(place);
  }
  return MakeColour(value >> 16, value >> 8 & 0xFF, value & 0xFF);
}

}  // namespace

std::span<const NamedColour> ColourNames() {
  return NamedColours;
}

bool BeginsColourParts(std::string_view text) {
  const std::string_view beginning = text.substr(0, 3);
  return EqualIgnoringCase(beginning, "RGB") || EqualIgnoringCase(beginning, "RVB");
}

ColourReading ReadColour(std::string_view text, const Separators& separators) {
  text = Trim(text);
  if (text.empty()) return {};
  const std::string upper = UpperCase(WithPlainBlanks(text));
  std::string_view name = upper;
  name = name.substr(0, name.find(separators.First));
  const std::size_t part = name.find(separators.Second);
  name = Trim(name.substr(0, part != std::string_view::npos ? part : name.find('/')));
  for (const NamedColour& named : NamedColours) {
    if (!name.empty() && name == named.Name) return {named.Value};
  }
  if (BeginsColourParts(upper)) return ReadColourParts(std::string_view(upper).substr(3), separators.First);
  const std::optional<Colour> hex = HexColour(name, separators);
  return {hex, !hex && !name.empty()};
}

ColourReading LookAtColour(std::string_view text, const Separators& separators) {
  try {
    return ReadColour(text, separators);
  } catch (const ScriptFault&) {
    return {std::nullopt, true};
  }
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
