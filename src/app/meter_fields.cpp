#include "app/meter_fields.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <utility>

#include "base/folded_text.h"
#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/colour_value.h"

namespace vaxel {
namespace {

enum class Kind : std::uint8_t { Angle, Length, Count, Number, Law, Text, Colour };

struct FieldRow {
  MeterField Field;
  Kind What;
  std::string_view Names;
};

using enum MeterField;
constexpr auto MeterFields = std::to_array<FieldRow>({
    {StartAngle, Kind::Angle,
     "start angle|angle start|min angle|angle min|first angle|angle 1|angle début|angle de début|"
     "angle initial|premier angle"},
    {EndAngle, Kind::Angle,
     "end angle|angle end|stop angle|max angle|angle max|last angle|angle 2|angle fin|angle de fin|"
     "angle final|dernier angle"},
    {Radius, Kind::Length, "radius|scale radius|arc radius|rayon|rayon arc|rayon de l'arc|rayon échelle"},
    {Divisions, Kind::Count,
     "divisions|major divisions|main divisions|major ticks|grandes divisions|divisions principales"},
    {Subdivisions, Kind::Count,
     "subdivisions|minor divisions|sub divisions|minor ticks|petites divisions|sous-divisions"},
    {FirstValue, Kind::Number,
     "first value|min value|minimum|min|start value|scale min|première valeur|valeur min|valeur début|"
     "valeur initiale"},
    {LastValue, Kind::Number,
     "last value|max value|maximum|max|end value|full scale|scale max|dernière valeur|valeur max|"
     "valeur fin|valeur finale"},
    {Law, Kind::Law, "law|scale law|scale type|scale|loi|loi échelle|type échelle|échelle"},
    {Title, Kind::Text, "title|heading|titre"},
    {Label, Kind::Text, "label|caption|legend|étiquette|libellé|légende"},
    {Unit, Kind::Text, "unit|units|unité|unités"},
    {Width, Kind::Length, "width|face width|dial width|largeur|largeur cadran|largeur du cadran"},
    {Height, Kind::Length, "height|face height|dial height|hauteur|hauteur cadran|hauteur du cadran"},
    {ScaleColour, Kind::Colour,
     "colour|color|scale colour|scale color|line colour|line color|couleur|couleur échelle|couleur trait"},
    {TextColour, Kind::Colour,
     "text colour|text color|font colour|font color|couleur texte|couleur du texte"},
    {FaceColour, Kind::Colour,
     "face colour|face color|background|background colour|background color|back colour|back color|fond|"
     "couleur fond|couleur du fond|couleur cadran"},
});

constexpr bool RowsFollowTheFields() {
  for (std::size_t i = 0; i < MeterFields.size(); ++i) {
    if (static_cast<std::size_t>(MeterFields[i].Field) != i) return false;
  }
  return MeterFields.size() == static_cast<std::size_t>(MeterField::Count);
}
static_assert(RowsFollowTheFields(), "a field without a row, or rows out of order");

// "STARTANGLE" of "Start_Angle" and "start angle".
std::string Compared(std::string_view name) {
  std::string folded = FoldedText(name);
  std::erase_if(folded, [](char c) { return c == ' ' || c == '_' || c == '-' || c == '.' || c == '\''; });
  return folded;
}

std::map<std::string, const FieldRow*, std::less<>> NamesAndRows() {
  std::map<std::string, const FieldRow*, std::less<>> rows;
  for (const FieldRow& row : MeterFields) {
    for (std::string_view rest = row.Names; !rest.empty();) {
      const std::string_view name = rest.substr(0, rest.find('|'));
      rest.remove_prefix(std::min(name.size() + 1, rest.size()));
      rows.emplace(Compared(name), &row);
    }
  }
  return rows;
}

const FieldRow* FindRow(std::string_view name) {
  static const auto rows = NamesAndRows();
  const auto found = rows.find(Compared(name));
  return found == rows.end() ? nullptr : found->second;
}

// A number at the start of a text, its decimal mark "." or ",", and what follows it.
struct LeadingPart {
  double Number;
  std::string Rest;  // folded
};

std::optional<LeadingPart> ReadLeading(std::string_view text) {
  std::string plain(text);
  std::replace(plain.begin(), plain.end(), ',', '.');
  std::string_view number = plain;
  const bool isNegative = number.starts_with('-');
  if (isNegative || number.starts_with('+')) number.remove_prefix(1);
  double value = 0;
  const std::size_t length = ReadUnsignedNumber(number, value);
  if (length == 0 || !(std::abs(value) <= 1e12)) return std::nullopt;
  const std::string_view rest = Trim(number.substr(length));
  // "1 000" and "1,000.5" mean more than their beginning.
  if (!rest.empty() && (IsDigit(rest.front()) || rest.front() == '.')) return std::nullopt;
  return LeadingPart{isNegative ? -value : value, FoldedText(rest)};
}

bool IsOneOf(std::string_view text, std::string_view words) {
  while (!words.empty()) {
    const std::string_view word = words.substr(0, words.find('|'));
    if (text == word) return true;
    words.remove_prefix(std::min(word.size() + 1, words.size()));
  }
  return false;
}

std::optional<double> ReadAngle(const LeadingPart& part) {
  const bool isDegrees = part.Rest.empty() || IsOneOf(part.Rest, "°|DEG|DEG.|DEGREE|DEGREES|DEGRE|DEGRES");
  constexpr double most = 720;
  return isDegrees && std::abs(part.Number) <= most ? std::optional(part.Number) : std::nullopt;
}

// Another unit of length would draw something else when it was dropped.
std::optional<double> ReadLength(const LeadingPart& part) {
  constexpr double most = 5000, inch = 25.4;
  double unit = 0;
  if (part.Rest.empty() || IsOneOf(part.Rest, "MM|MM.|MILLIMETRE|MILLIMETRES|MILLIMETER|MILLIMETERS"))
    unit = 1;
  if (IsOneOf(part.Rest, "CM|CM.|CENTIMETRE|CENTIMETRES|CENTIMETER|CENTIMETERS")) unit = 10;
  if (IsOneOf(part.Rest, "IN|IN.|INCH|INCHES|\"|POUCE|POUCES")) unit = inch;
  const double length = part.Number * unit;
  return length > 0 && length <= most ? std::optional(length) : std::nullopt;
}

std::optional<double> ReadCount(const LeadingPart& part) {
  constexpr double most = 1000;
  const bool isCount = part.Number >= 1 && part.Number <= most && part.Number == std::floor(part.Number);
  return isCount ? std::optional(part.Number) : std::nullopt;
}

std::optional<MeterValue> ReadNumber(Kind kind, std::string_view text) {
  const std::optional<LeadingPart> part = ReadLeading(text);
  if (!part) return std::nullopt;
  std::optional<double> number = part->Number;
  if (kind == Kind::Angle) number = ReadAngle(*part);
  if (kind == Kind::Length) number = ReadLength(*part);
  if (kind == Kind::Count) number = ReadCount(*part);
  return number ? std::optional(MeterValue{*number}) : std::nullopt;
}

std::optional<MeterValue> ReadLaw(std::string_view text) {
  static constexpr std::array<std::pair<std::string_view, MeterLaw>, 4> laws = {
      {{"LIN|LINEAR|LINEAIRE", MeterLaw::Linear},
       {"LOG|LOG10|LOGARITHMIC|LOGARITHMIQUE", MeterLaw::Logarithmic},
       {"SQUARE|QUADRATIC|CARRE|QUADRATIQUE", MeterLaw::Square},
       {"ROOT|SQUAREROOT|SQRT|RACINE|RACINECARREE", MeterLaw::Root}}};
  const std::string wanted = Compared(text);
  for (const auto& [words, law] : laws) {
    if (IsOneOf(wanted, words)) return MeterValue{0, {}, law};
  }
  return std::nullopt;
}

// A variable can hold any text, but not one that would go on in the next line. An apostrophe would begin a
// comment.
std::optional<MeterValue> ReadText(std::string_view text) {
  constexpr std::size_t most = 200;
  if (text.size() > 1 && text.front() == '"' && text.back() == '"')
    text = TrimText(text.substr(1, text.size() - 2));
  if (text.empty() || text.size() > most || text.ends_with('_')) return std::nullopt;
  MeterValue value;
  for (const char c : text) value.Text += c == '\'' ? std::string("’") : std::string(1, c);
  return value;
}

std::optional<MeterValue> ReadMeterColour(std::string_view text) {
  std::string plain = UpperCase(text);
  std::erase(plain, '"');
  if (plain.starts_with("0X")) plain.replace(0, 2, "#");
  if (!plain.empty() && IsDigit(plain.front())) plain.insert(0, "RGB ");
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c == ',' || c == ';' || c == '(' || c == ')'; }, ' ');
  const ColourReading read = LookAtColour(Trim(plain), {});
  if (!read.Value || read.IsDoubtful) return std::nullopt;
  return MeterValue{0, ColourText(*read.Value)};
}

std::optional<MeterValue> ReadValue(Kind kind, std::string_view text) {
  switch (kind) {
    case Kind::Law:
      return ReadLaw(text);
    case Kind::Text:
      return ReadText(text);
    case Kind::Colour:
      return ReadMeterColour(text);
    default:
      return ReadNumber(kind, text);
  }
}

bool IsRemark(std::string_view line) {
  return line.empty() || line.starts_with(';') || line.starts_with('#') || line.starts_with('\'') ||
         line.starts_with("//") || (line.starts_with('[') && line.ends_with(']'));
}

bool Take(MeterLine& line, std::string_view name, std::string_view text) {
  const FieldRow* const row = FindRow(name);
  if (!row) return false;
  std::optional<MeterValue> value = ReadValue(row->What, TrimText(text));
  if (!value) return false;
  line.Kind = MeterLineKind::Known;
  line.Field = row->Field;
  line.Value = std::move(*value);
  return true;
}

// Without a mark between them the name is as many words as are known.
void ReadLine(MeterLine& line) {
  const std::string_view text = line.Text;
  if (IsRemark(text)) {
    line.Kind = MeterLineKind::Remark;
    return;
  }
  const std::size_t mark = text.find_first_of("=:");
  if (mark != std::string_view::npos && Take(line, text.substr(0, mark), text.substr(mark + 1))) return;
  constexpr std::size_t mostWords = 4;
  std::array<std::size_t, mostWords> ends{};
  std::size_t words = 0;
  for (std::size_t at = text.find(' '); at != std::string_view::npos && words < mostWords;
       at = text.find(' ', at + 1)) {
    ends[words++] = at;
  }
  while (words > 0) {
    const std::size_t end = ends[--words];
    const std::string_view value = TrimLeft(text.substr(end));
    if (value.starts_with('=') || value.starts_with(':')) continue;
    if (Take(line, text.substr(0, end), value)) return;
  }
}

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < ' ' && c != '\n' && c != '\t' && c != '\f') || byte == 0x7F;
}

bool TellsADial(const MeterDial& dial) {
  std::size_t fields = 0, numbers = 0;
  for (const FieldRow& row : MeterFields) {
    if (!dial.Find(row.Field)) continue;
    ++fields;
    if (row.What == Kind::Angle || row.What == Kind::Length || row.What == Kind::Count ||
        row.What == Kind::Number) {
      ++numbers;
    }
  }
  return fields >= 2 && numbers >= 1;
}

}  // namespace

void MeterDial::Reject(MeterField field) {
  std::optional<std::size_t>& line = LineOf[static_cast<std::size_t>(field)];
  if (line) Lines[*line].Kind = MeterLineKind::Unknown;
  line.reset();
}

std::optional<MeterDial> ReadMeterDial(std::string_view text) {
  if (std::any_of(text.begin(), text.end(), IsControl)) return std::nullopt;
  MeterDial dial;
  while (!text.empty()) {
    std::string plain(TakeLine(text));
    std::replace_if(
        plain.begin(), plain.end(), [](char c) { return c == '\t' || c == '\f'; }, ' ');
    MeterLine line{std::string(Trim(plain))};
    ReadLine(line);
    if (line.Kind == MeterLineKind::Known) {
      std::optional<std::size_t>& place = dial.LineOf[static_cast<std::size_t>(line.Field)];
      if (place) line.Kind = MeterLineKind::Unknown;
      if (!place) place = dial.Lines.size();
    }
    dial.Lines.push_back(std::move(line));
  }
  return TellsADial(dial) ? std::optional(std::move(dial)) : std::nullopt;
}

}  // namespace vaxel
