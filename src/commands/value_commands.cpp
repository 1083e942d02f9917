#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/handlers.h"
#include "commands/scale_notation.h"
#include "commands/text_notation.h"
#include "interpreter/script_fault.h"
#include "scale/value_text.h"

namespace vaxel {
namespace {

// The direction in which the texts of a command read.
enum class Baseline : std::uint8_t { Level, Tangent, Ray };

struct TextStyle {
  Baseline Form = Baseline::Level;
  std::optional<double> Angle;  // degrees
  bool Relative = false;        // the angle is added to the form's own direction
  bool FacesScale = false;      // the anchor is the side next to the scale
  AnchorAlong Along = AnchorAlong::Middle;
  AnchorAcross Across = AnchorAcross::Middle;
};

// "[[R]angle[{J;GDBH}]]".
TextStyle ReadTextStyle(const RunContext& run, Baseline form, std::string_view text) {
  TextStyle style;
  style.Form = form;
  const std::string upper = UpperCase(Trim(WithPlainBlanks(text)));
  std::string_view rest = upper;
  // The one function whose name begins like the prefix.
  style.Relative = rest.starts_with('R') && !rest.starts_with("RND");
  if (style.Relative) rest = TrimLeft(rest.substr(1));
  for (; !rest.empty(); rest.remove_suffix(1)) {
    const char letter = rest.back();
    if (letter == 'J') {
      style.FacesScale = true;
    } else if (letter == 'G') {
      style.Along = AnchorAlong::Start;
    } else if (letter == 'D') {
      style.Along = AnchorAlong::End;
    } else if (letter == 'B') {
      style.Across = AnchorAcross::Baseline;
    } else if (letter == 'H') {
      style.Across = AnchorAcross::Top;
    } else if (letter != ' ') {
      break;
    }
  }
  if (rest.ends_with("°")) rest = DropLastCharacter(rest);
  style.Angle = StrictValue(rest, run.Separators, text);
  return style;
}

class ValueWriter {
 public:
  ValueWriter(RunContext& run, const TextStyle& style) : run_(run), style_(style) {}

  // distance is counted from the support, before the side of the scale is taken into account.
  void Write(double place, double distance, std::string_view text, Colour colour) const {
    if (text.empty()) return;
    const ScaleSupport& support = run_.Support;
    const double length = distance * double{support.GradSide};
    const Point point = RequireFinitePoint(support.MarkAt(place, length).Outer);
    const double outward = RequireFinite(support.OutwardDirection(place, length));
    double rotation = style_.Form == Baseline::Tangent ? outward - 90
                      : style_.Form == Baseline::Ray   ? support.RayDirection(place)
                                                       : 0;
    if (style_.Angle) rotation = style_.Relative ? rotation + *style_.Angle : *style_.Angle;
    TextAnchor anchor{rotation, style_.Along, style_.Across};
    if (style_.FacesScale) {
      const bool inside = length < 0 || (length == 0 && support.GradSide < 0);
      anchor = AnchorFacing(TextFrame(outward).Along * (inside ? 1 : -1), rotation);
    } else if (style_.Form == Baseline::Ray && !style_.Angle) {
      anchor = TurnedUpright(anchor);
    }
    WriteText(run_.Surface, text, run_.Surface.Origin() + point, anchor, run_.Surface.Font, colour);
  }

 private:
  RunContext& run_;
  TextStyle style_;
};

float FloatOf(double value) {
  const auto narrow = static_cast<float>(value);
  RequireFinite(double{narrow});
  return narrow;
}

// "Value[§U]", the value without the unit, in single precision. The mark of a literal, which a unit with "%"
// needs, is passed over.
double ValueOf(const RunContext& run, const Parameters& parameters, std::size_t n) {
  const std::string_view text = TextOf(parameters.Text(n));
  const auto value = NumberOf(text, run.Separators);
  if (value) return ShortestDecimal(FloatOf(*value));
  if (!text.empty()) FailExpression(text);
  throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
}

// The unit after the second separator; there is none where there is no separator.
std::optional<std::string> UnitOf(const RunContext& run, std::string_view parameter) {
  parameter = TextOf(parameter);
  const std::size_t mark = parameter.find(run.Separators.Second);
  if (mark == std::string_view::npos) return std::nullopt;
  std::string_view unit = parameter.substr(mark + run.Separators.Second.size());
  while (unit.ends_with(' ')) unit.remove_suffix(1);
  return std::string(unit);
}

// What both laws read alike; the parameters' numbers count from the one before "Number".
struct ValueSeries {
  double Distance = 0, First = 0, Last = 0;
  Colour Ink = Black;
  std::string StartUnit;
  std::optional<std::string> EndUnit;
};

ValueSeries ReadSeries(const RunContext& run, const Parameters& parameters, std::size_t before) {
  return {double{FloatOf(parameters.RequiredNumber(before + 4))},
          parameters.NumberOr(before + 5, 0),
          parameters.NumberOr(before + 6, 0),
          run.ColourOr(parameters.Rest(before + 7)),
          UnitOf(run, parameters.Text(before + 2)).value_or(""),
          UnitOf(run, parameters.Text(before + 3))};
}

void WriteLinearValues(const RunContext& run, const Parameters& parameters, std::size_t before,
                       const ValueWriter& writer) {
  const ValueSeries series = ReadSeries(run, parameters, before);
  const float number = FloatOf(parameters.RequiredNumber(before + 1));
  const double start = ValueOf(run, parameters, before + 2);
  const double end = ValueOf(run, parameters, before + 3);
  LinearGraduation graduation(run.Support, double{number}, series.First, series.Last);
  ForEachMark(graduation, [&] {
    const float value = ValueAt(graduation.Index(), number, start, end);
    RequireFinite(double{value});
    const std::string unit = graduation.IsLast() ? series.EndUnit.value_or("") : series.StartUnit;
    writer.Write(graduation.Place(), series.Distance, ValueText(value, {}, unit), series.Ink);
  });
}

void WriteLogValues(const RunContext& run, const Parameters& parameters, std::size_t before,
                    const ValueWriter& writer) {
  const ValueSeries series = ReadSeries(run, parameters, before);
  // The scale itself says where it begins; what stands there must be a number all the same.
  NumberOf(TextOf(parameters.Text(before + 2)), run.Separators);
  const std::string_view notation = TextOf(parameters.Text(before + 3));
  const auto format = ReadValueFormat(notation.substr(0, notation.find(run.Separators.Second)));
  if (!format) throw ScriptFault(FaultReason::BadValueFormat, Shorten(Trim(notation), 40));
  LogGraduation graduation = ReadLogGraduation(run, parameters, before + 1, series.First, series.Last);

  // Which mark is the last is known when there is no other: each is written one step late.
  std::optional<double> place;
  float value = 0;
  const auto write = [&](const std::string& unit) {
    if (place) writer.Write(*place, series.Distance, ValueText(value, *format, unit), series.Ink);
  };
  ForEachMark(graduation, [&] {
    write(series.StartUnit);
    place = graduation.Place();
    value = graduation.Value();
    RequireFinite(double{value});
  });
  write(series.EndUnit.value_or(series.StartUnit));
}

void WriteValues(RunContext& run, const Parameters& parameters, std::size_t before, const TextStyle& style) {
  const ValueWriter writer(run, style);
  if (run.Support.LogScale) {
    WriteLogValues(run, parameters, before, writer);
  } else {
    WriteLinearValues(run, parameters, before, writer);
  }
}

// The text of each value: one for all, or those of lists.
std::vector<std::string> ReadTexts(const RunContext& run, std::string_view text, std::size_t count) {
  const std::size_t mark = text.find(run.Separators.Second);
  const bool isList = !IsLiteral(text) && mark != std::string_view::npos &&
                      TrimLeft(text.substr(mark + run.Separators.Second.size())).starts_with('%');
  if (!isList) return std::vector<std::string>(count, std::string(text));
  std::vector<std::string> texts = ReadList(run, text);
  if (texts.size() != count) throw ScriptFault(FaultReason::ListLengths, Shorten(Trim(text), 40));
  return texts;
}

// Groups of value, text, distance and colour.
void WriteSingleValues(RunContext& run, const Parameters& parameters, std::size_t before,
                       const TextStyle& style) {
  constexpr std::size_t groupSize = 4;
  const ValueWriter writer(run, style);
  for (std::size_t n = before + 1; n <= parameters.Count(); n += groupSize) {
    const bool isEmpty = parameters.Trimmed(n).empty() && parameters.Trimmed(n + 1).empty();
    if (isEmpty && n > before + 1) continue;
    const double distance = parameters.RequiredNumber(n + 2);
    const Colour colour = run.ColourOr(parameters.Text(n + 3));
    const auto values = ReadScaleValues(run, parameters, n);
    const std::vector<std::string> texts = ReadTexts(run, parameters.Text(n + 1), values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (values[i]) writer.Write(run.Support.PlaceOf(*values[i]), distance, TextOf(texts[i]), colour);
    }
  }
}

}  // namespace

void RunVal(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  WriteValues(run, parameters, 0, {});
}

void RunValD(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  WriteValues(run, parameters, 1, ReadTextStyle(run, Baseline::Ray, parameters.Text(1)));
}

void RunValR(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  WriteValues(run, parameters, 1, ReadTextStyle(run, Baseline::Tangent, parameters.Text(1)));
}

void RunVal1(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  WriteSingleValues(run, parameters, 0, {});
}

void RunVal1D(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  WriteSingleValues(run, parameters, 1, ReadTextStyle(run, Baseline::Ray, parameters.Text(1)));
}

void RunVal1R(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  WriteSingleValues(run, parameters, 1, ReadTextStyle(run, Baseline::Tangent, parameters.Text(1)));
}

}  // namespace vaxel
