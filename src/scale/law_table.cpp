#include "scale/law_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "base/text.h"

namespace vaxel {
namespace {

constexpr std::string_view Blanks = " \t";

std::string_view Stripped(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(Blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

struct Row {
  std::array<std::string_view, 2> Fields;
  bool HasDecimalComma = false;
};

Row SplitRow(std::string_view line) {
  Row row;
  row.HasDecimalComma = line.find_first_of(";\t") != std::string_view::npos;
  const std::string_view marks = row.HasDecimalComma                        ? ";\t"
                                 : line.find(',') != std::string_view::npos ? ","
                                                                            : " ";
  for (std::string_view& field : row.Fields) {
    const std::size_t end = std::min(line.find_first_of(marks), line.size());
    field = Stripped(line.substr(0, end));
    line.remove_prefix(std::min(end + 1, line.size()));
    // Several blanks separate no more than one does.
    if (marks == " ") line = Stripped(line);
  }
  return row;
}

std::optional<double> NumberIn(std::string_view field, bool hasDecimalComma) {
  std::string text(field);
  if (hasDecimalComma) std::replace(text.begin(), text.end(), ',', '.');
  std::string_view digits = text;
  if (digits.starts_with('-') || digits.starts_with('+')) digits.remove_prefix(1);
  double value = 0;
  if (digits.empty() || ReadUnsignedNumber(digits, value) != digits.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  return text.starts_with('-') ? -value : value;
}

// Whether one of the fields is a number but for its minus.
bool HasDash(const Row& row) {
  return std::any_of(row.Fields.begin(), row.Fields.end(), [](std::string_view field) {
    const std::size_t length = WrongMinusLength(field);
    return length > 0 && length < field.size() && IsDigit(field[length]);
  });
}

LawTable FaultAt(TableFault fault, std::size_t at) {
  LawTable table;
  table.Fault = fault;
  table.At = at;
  return table;
}

}  // namespace

LawTable JudgePoints(const std::vector<PlacedLawPoint>& points) {
  LawTable table;
  for (const PlacedLawPoint& point : points) {
    if (point.IsDirect != points.front().IsDirect) return FaultAt(TableFault::MixedReadings, point.At);
    table.Points.push_back(point.Point);
  }
  if (points.size() < 2) return FaultAt(TableFault::TooFew, points.empty() ? 1 : points.back().At);
  const std::size_t unordered = FirstUnordered(table.Points);
  if (unordered < points.size()) return FaultAt(TableFault::Unordered, points[unordered].At);
  table.IsDirect = points.front().IsDirect;
  return table;
}

namespace {

LawTable ReadRows(std::string_view text, LawTable::WrongMinus& dash) {
  std::vector<PlacedLawPoint> points;
  bool mayBeHeading = true;
  for (std::size_t number = 1; !text.empty(); ++number) {
    std::string_view line = TakeLine(text);
    line = Stripped(line.substr(0, line.find_first_of("'#")));
    if (line.empty()) continue;
    const Row row = SplitRow(line);
    if (dash.At == 0 && HasDash(row)) dash = {number, line};
    std::string_view reading = row.Fields[1];
    const bool isDirect = reading.ends_with("°");
    if (isDirect) reading = Stripped(DropLastCharacter(reading));
    const auto value = NumberIn(row.Fields[0], row.HasDecimalComma);
    const auto place = NumberIn(reading, row.HasDecimalComma);
    const bool isHeading = mayBeHeading && !value;
    mayBeHeading = false;
    if (isHeading) continue;
    if (!value || !place) return FaultAt(TableFault::NotAPair, number);
    points.push_back({{*value, *place}, isDirect, number});
  }
  return JudgePoints(points);
}

}  // namespace

LawTable ReadLawTable(std::string_view text) {
  LawTable::WrongMinus dash;
  LawTable table = ReadRows(text, dash);
  table.Dash = dash;
  return table;
}

}  // namespace vaxel
