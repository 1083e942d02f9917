// Marks and figures by value: at the multiples of a step, at listed values, or where there is room.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/handlers.h"
#include "commands/mark_drawing.h"
#include "commands/scale_notation.h"
#include "commands/value_writer.h"
#include "interpreter/script_fault.h"
#include "scale/value_steps.h"

namespace vaxel {
namespace {

// The least distance of marks in millimetres where a script does not say it.
constexpr double UsualDistance = 0.8;

// The values of a series, and how their figures are written.
struct Series {
  std::vector<double> Values;
  std::optional<ValueChoice> Choice;  // of the values, when they go by the room that there is
  double From = 0, To = 0;
  std::string_view Unit;
  std::string_view Notation;
};

double AboveZero(std::optional<double> value, std::string_view shown) {
  if (value && *value > 0 && std::isfinite(*value)) return *value;
  throw ScriptFault(FaultReason::BadStep, Shorten(Trim(shown), 40));
}

// An end of a series; left out it is that of the scale.
double ReadEnd(const RunContext& run, std::string_view text, double otherwise) {
  const auto value = ScaleValueOf(run, text);
  if (!value) return otherwise;
  return value->IsDirect ? RequireFinite(run.Support.ValueAtPlace(run.Support.PlaceOf(*value)))
                         : value->Value;
}

void ReadEnds(const RunContext& run, const Parameters& parameters, std::size_t n, Series& series) {
  const ScaleSupport& support = run.Support;
  double first = support.FirstValue, last = support.LastValue;
  if (support.LogScale) {
    first = ShortestDecimal(support.LogStart);
    last = ShortestDecimal(support.LogEnd) * std::pow(10.0, support.Decades);
  }
  series.From = ReadEnd(run, parameters.Text(n), first);
  series.To = ReadEnd(run, parameters.Text(n + 1), last);
}

AreApart MarksApartBy(const ScaleSupport& support, double distance) {
  return [&support, distance](double a, double b) {
    constexpr double nothing = 1e-9;
    return std::abs(support.WayTo(support.PlaceOf({b})) - support.WayTo(support.PlaceOf({a}))) >=
           distance - nothing;
  };
}

// Marks as close as that must not be more than a series may have.
void RequireFew(const ScaleSupport& support, const Series& series, double least, std::string_view shown) {
  const double from = support.WayTo(support.PlaceOf({series.From}));
  const double to = support.WayTo(support.PlaceOf({series.To}));
  if (!(std::abs(RequireFinite(to - from)) / least < static_cast<double>(MaxSeriesValues))) {
    throw ScriptFault(FaultReason::TooManyValues, Shorten(Trim(shown), 40));
  }
}

std::vector<double> ListedValues(const RunContext& run, const std::vector<std::string_view>& lists) {
  std::vector<double> values;
  for (std::string_view list : lists) {
    for (const std::string& item : ReadList(run, run.Separators.Second + std::string(list))) {
      const auto value = ScaleValueOf(run, item);
      if (!value) continue;
      if (value->IsDirect) throw ScriptFault(FaultReason::BadStep, Shorten(Trim(item), 40));
      values.push_back(value->Value);
    }
  }
  return values;
}

// "step", "auto[§distance]" or "§%List" in parameter n, behind it a unit and a notation; the ends are in the
// parameters from and from + 1.
Series ReadSeries(const RunContext& run, const Parameters& parameters, std::size_t n, std::size_t from) {
  Series series;
  ReadEnds(run, parameters, from, series);
  const std::string_view text = TextOf(parameters.Text(n));
  if (text.empty()) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
  const std::vector<std::string_view> parts = SplitAt(text, run.Separators.Second);
  const std::string_view step = Trim(parts[0]);
  std::size_t behind = 1;
  const auto next = [&] { return behind < parts.size() ? parts[behind] : std::string_view(); };
  if (step.empty() && Trim(next()).starts_with('%')) {
    std::vector<std::string_view> lists;
    for (; Trim(next()).starts_with('%'); ++behind) lists.push_back(next());
    series.Values = ListedValues(run, lists);
  } else if (EqualIgnoringCase(step, "auto")) {
    const auto distance = NumberOf(next(), run.Separators);
    const double least = distance ? AboveZero(distance, next()) : UsualDistance;
    ++behind;
    RequireFew(run.Support, series, least, text);
    series.Choice = ChooseValues(series.From, series.To, MarksApartBy(run.Support, least));
    series.Values = series.Choice->Values;
  } else {
    const double width = AboveZero(NumberOf(step, run.Separators), text);
    auto values = MultiplesBetween(width, series.From, series.To);
    if (!values) throw ScriptFault(FaultReason::TooManyValues, Shorten(step, 40));
    series.Values = std::move(*values);
  }
  series.Unit = next();
  ++behind;
  series.Notation = next();
  return series;
}

// The figures that there is room for, among the marks that were chosen.
template <class TextOfValue>
std::vector<double> ChooseFigures(const RunContext& run, const ValueWriter& writer, double distance,
                                  const ValueChoice& marks, const TextOfValue& textOf) {
  const double halfFigure = writer.WidthOf("0") / 2;
  std::map<double, FigureBox> boxes;
  const auto boxOf = [&](double value) -> const FigureBox& {
    const auto known = boxes.find(value);
    if (known != boxes.end()) return known->second;
    const FigureBox box = writer.BoxOf(run.Support.PlaceOf({value}), distance, textOf(value));
    return boxes.emplace(value, box).first->second;
  };
  return ChooseAmong(marks, [&](double a, double b) { return AreApartBy(boxOf(a), boxOf(b), halfFigure); });
}

void WriteSeries(RunContext& run, const Parameters& parameters, std::size_t before, const TextStyle& style) {
  const std::size_t n = before + 1;
  const double distance = parameters.RequiredNumber(n + 1);
  const Colour ink = run.ColourOr(parameters.Rest(n + 4));
  const Series series = ReadSeries(run, parameters, n, n + 2);
  // A unit may be in a variable, but for a literal one.
  std::string unit(series.Unit);
  if (!IsLiteral(parameters.Text(n))) unit = run.Substitute(unit);
  unit.resize(unit.find_last_not_of(' ') + 1);
  const ValueFormat format = ReadNotation(run, series.Notation);
  const auto textOf = [&](double value) {
    if (std::isinf(value)) return std::string(value < 0 ? "−∞" : "∞");
    const auto narrow = static_cast<float>(value);
    RequireFinite(double{narrow});
    return ValueText(narrow, format, unit);
  };
  const ValueWriter writer(run, style);
  const std::vector<double> values =
      series.Choice ? ChooseFigures(run, writer, distance, *series.Choice, textOf) : series.Values;
  for (double value : values) writer.Write(run.Support.PlaceOf({value}), distance, textOf(value), ink);
}

}  // namespace

void RunGradV(RunContext& run, const Parameters& parameters) {
  RequireScale(run);
  MarkStyle style =
      ReadMarkStyle(run, parameters.RequiredNumber(2), parameters.Text(5), run.ColourOr(parameters.Text(6)));
  const std::string_view shape = parameters.Part(2, 1);
  if (!ReadMarkShape(run, shape, style))
    throw ScriptFault(FaultReason::BadMarkShape, Shorten(Trim(shape), 40));
  const auto skip = parameters.Number(7);
  if (skip) AboveZero(skip, parameters.Text(7));
  for (double value : ReadSeries(run, parameters, 1, 3).Values) {
    if (skip && std::isfinite(value) && IsMultipleOf(value, *skip)) continue;
    DrawMark(run, run.Support.PlaceOf({value}), style);
  }
}

void RunValV(RunContext& run, const Parameters& parameters) {
  RequireScale(run);
  WriteSeries(run, parameters, 0, {});
}

void RunValVD(RunContext& run, const Parameters& parameters) {
  RequireScale(run);
  WriteSeries(run, parameters, 1, ReadTextStyle(run, Baseline::Ray, parameters.Text(1)));
}

void RunValVR(RunContext& run, const Parameters& parameters) {
  RequireScale(run);
  WriteSeries(run, parameters, 1, ReadTextStyle(run, Baseline::Tangent, parameters.Text(1)));
}

}  // namespace vaxel
