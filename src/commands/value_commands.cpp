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
#include "commands/value_writer.h"
#include "interpreter/script_fault.h"
#include "scale/value_text.h"

namespace vaxel {
namespace {

float FloatOf(double value) {
  const auto narrow = static_cast<float>(value);
  RequireFinite(double{narrow});
  return narrow;
}

// "Value[§U]", the value without the unit, in single precision; a scale with values of its own has one where
// it is left out. The mark of a literal, which a unit with "%" needs, is passed over.
double ValueOf(const RunContext& run, const Parameters& parameters, std::size_t n, double own) {
  const std::string_view text = TextOf(parameters.Text(n));
  const auto value = NumberOf(text, run.Separators);
  if (value) return ShortestDecimal(FloatOf(*value));
  if (run.Support.HasOwnValues && Trim(text.substr(0, text.find(run.Separators.Second))).empty()) return own;
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

ValueSeries ReadSeries(RunContext& run, const Parameters& parameters, std::size_t before) {
  return {double{FloatOf(parameters.RequiredNumber(before + 4))},
          parameters.NumberOr(before + 5, 0),
          parameters.NumberOr(before + 6, 0),
          run.ColourOr(parameters.Rest(before + 7)),
          UnitOf(run, parameters.Text(before + 2)).value_or(""),
          UnitOf(run, parameters.Text(before + 3))};
}

void WriteLinearValues(RunContext& run, const Parameters& parameters, std::size_t before,
                       const ValueWriter& writer) {
  const ValueSeries series = ReadSeries(run, parameters, before);
  const float number = FloatOf(parameters.RequiredNumber(before + 1));
  const double start = ValueOf(run, parameters, before + 2, run.Support.FirstValue);
  const double end = ValueOf(run, parameters, before + 3, run.Support.LastValue);
  LinearGraduation graduation = ReadLinearGraduation(run, double{number}, series.First, series.Last);
  ForEachMark(graduation, [&] {
    const float value = ValueAt(graduation.Index(), number, start, end);
    RequireFinite(double{value});
    const std::string unit = graduation.IsLast() ? series.EndUnit.value_or("") : series.StartUnit;
    writer.Write(graduation.Place(), series.Distance, ValueText(value, run.PlainValues, unit), series.Ink);
  });
}

void WriteLogValues(RunContext& run, const Parameters& parameters, std::size_t before,
                    const ValueWriter& writer) {
  const ValueSeries series = ReadSeries(run, parameters, before);
  // The scale itself says where it begins; what stands there must be a number all the same.
  NumberOf(TextOf(parameters.Text(before + 2)), run.Separators);
  const std::string_view notation = TextOf(parameters.Text(before + 3));
  const ValueFormat format = ReadNotation(run, notation.substr(0, notation.find(run.Separators.Second)));
  LogGraduation graduation = ReadLogGraduation(run, parameters, before + 1, series.First, series.Last);

  // Which mark is the last is known when there is no other: each is written one step late.
  std::optional<double> place;
  float value = 0;
  const auto write = [&](const std::string& unit) {
    if (place) writer.Write(*place, series.Distance, ValueText(value, format, unit), series.Ink);
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

// The texts of so many values: those of lists, or a single one for all.
std::vector<std::string> ReadTexts(const RunContext& run, std::string_view text, std::size_t count) {
  const std::size_t mark = text.find(run.Separators.Second);
  const bool isList = !IsLiteral(text) && mark != std::string_view::npos &&
                      TrimLeft(text.substr(mark + run.Separators.Second.size())).starts_with('%');
  if (!isList) return {std::string(text)};
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
      const std::string& written = texts[texts.size() == 1 ? 0 : i];
      if (values[i]) writer.Write(run.Support.PlaceOf(*values[i]), distance, TextOf(written), colour);
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
