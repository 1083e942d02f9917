// What the lines of a Meter file say of a dial. There is no description of the format: a line is read as
// "name = value", "name: value" or "name value", and counts when a dial has something of that name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vaxel {

enum class MeterField : std::uint8_t {
  StartAngle,
  EndAngle,
  Radius,
  Divisions,
  Subdivisions,
  FirstValue,
  LastValue,
  Law,
  Title,
  Label,
  Unit,
  Width,
  Height,
  ScaleColour,
  TextColour,
  FaceColour,
  Count
};

// How the deflection follows the value.
enum class MeterLaw : std::uint8_t { Linear, Logarithmic, Square, Root };

// A value as far as its field has use for it: lengths in millimetres, angles in degrees.
struct MeterValue {
  double Number = 0;
  std::string Text{};  // of a text; of a colour as scripts write it
  MeterLaw Law = MeterLaw::Linear;
};

enum class MeterLineKind : std::uint8_t { Known, Remark, Unknown };

struct MeterLine {
  std::string Text;  // without the blanks around it and without control characters; empty for an empty line
  MeterLineKind Kind = MeterLineKind::Unknown;  // an empty line is a remark
  MeterField Field{};
  MeterValue Value{};
};

struct MeterDial {
  std::vector<MeterLine> Lines;
  // The line of each field, from 0; there is none for one that the file does not tell. A field that is told
  // twice is known by its first line, the others are unknown.
  std::array<std::optional<std::size_t>, static_cast<std::size_t>(MeterField::Count)> LineOf{};

  const MeterValue* Find(MeterField field) const {
    const std::optional<std::size_t>& line = LineOf[static_cast<std::size_t>(field)];
    return line ? &Lines[*line].Value : nullptr;
  }
  double NumberOr(MeterField field, double standard) const {
    const MeterValue* const value = Find(field);
    return value ? value->Number : standard;
  }
  // Has the line of a field, when there is one, count as unknown.
  void Reject(MeterField field);
};

// Reads a text whose lines end in LF. There is no dial when it has control characters, as no text has, or
// tells less than two fields of a dial, one of them a number.
std::optional<MeterDial> ReadMeterDial(std::string_view text);

}  // namespace vaxel
