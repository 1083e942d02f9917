#include "commands/scale_notation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

double PositiveAndFinite(double value) {
  if (value <= 0) throw ScriptFault(FaultReason::Domain);
  return RequireFinite(value);
}

std::string NumberWithInfinity(double value) {
  if (std::isinf(value)) return value < 0 ? "-∞" : "∞";
  return NumberText(value);
}

// Whether a fraction of the support lies farther beyond its ends than what is drawn there on purpose: a mark
// of rest, the red end of a sector. What is no number does not.
bool IsFarOutside(double fraction) {
  constexpr double margin = 0.1;
  return fraction < -margin || fraction > 1 + margin;
}

std::string RangeText(double first, double last) {
  return NumberWithInfinity(first) + " … " + NumberWithInfinity(last);
}

// The values at the ends of a scale.
std::string RangeOf(const ScaleSupport& support) {
  if (!support.LogScale) return RangeText(support.FirstValue, support.LastValue);
  return RangeText(ShortestDecimal(support.LogStart),
                   ShortestDecimal(support.LogEnd) * std::pow(10.0, support.Decades));
}

void NoticeFarValue(const RunContext& run, double value) {
  const ScaleSupport& support = run.Support;
  if (!IsFarOutside(support.ScaleFraction(value))) return;
  if (support.LogScale || support.HasOwnValues) {
    run.Notice(TextId::FarFromScale, NumberText(value), RangeOf(support));
  } else {
    run.Notice(TextId::PerCentFarFromScale, NumberText(value));
  }
}

// Of a scale of so many intervals, the marks from first to last.
void NoticeFarMarks(const RunContext& run, double parts, double first, double last) {
  if (std::abs(parts - std::trunc(parts)) > 1e-9) run.Notice(TextId::PartsNotWhole, NumberText(parts));
  for (double mark : {first, last}) {
    if (IsFarOutside(mark / parts)) run.Notice(TextId::FarFromScale, NumberText(mark), RangeText(0, parts));
  }
}

LogStepping ReadLogStepping(const RunContext& run, const Parameters& parameters, std::size_t n) {
  const std::vector<std::string_view> parts = SplitAt(parameters.Text(n), run.Separators.Second);
  const auto part = [&](std::size_t i, double otherwise) {
    return i < parts.size() ? NumberOf(parts[i], run.Separators).value_or(otherwise) : otherwise;
  };
  const auto interval = NumberOf(parts[0], run.Separators);
  if (!interval) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
  // Any interval above a decade leads from decade to decade.
  constexpr double largest = 1000;
  const LogStepping stepping{static_cast<float>(std::min(*interval, largest)),
                             static_cast<float>(part(1, 10)), static_cast<float>(part(2, 1))};
  if (stepping.LogInterval < LogStepping::SmallestInterval) {
    throw ScriptFault(FaultReason::BadInterval, Shorten(Trim(parts[0]), 40));
  }
  return stepping;
}

}  // namespace

void RequireSupport(const RunContext& run) {
  if ((run.OrderState & OrderSupport) == 0) throw ScriptFault::Arithmetic(FaultReason::NoSupport);
}

void RequireScale(const RunContext& run) {
  if ((run.OrderState & OrderSupport) == 0) throw ScriptFault(FaultReason::ScaleNeededFirst);
}

Point RequireFinitePoint(Point point) {
  return {RequireFinite(point.X), RequireFinite(point.Y)};
}

LogGraduation ReadLogGraduation(const RunContext& run, const Parameters& parameters, std::size_t n,
                                double first, double last) {
  const ScaleSupport& support = run.Support;
  const LogStepping stepping = ReadLogStepping(run, parameters, n);
  // The ends are taken as they were written: single precision would pass a last mark by.
  const double start = first == 0 ? ShortestDecimal(support.LogStart) : first;
  const double end = last == 0 ? ShortestDecimal(support.LogEnd) * std::pow(10.0, support.Decades) : last;
  for (double value : {PositiveAndFinite(start), PositiveAndFinite(end)}) NoticeFarValue(run, value);
  return {support, stepping, start, end};
}

void RequireReached(const RunContext& run, double value) {
  const ScaleSupport& support = run.Support;
  if (support.Reaches(value)) return;
  throw ScriptFault(FaultReason::BeyondScale, NumberWithInfinity(value) + " (" + RangeOf(support) + ")");
}

LinearGraduation ReadLinearGraduation(const RunContext& run, double count, double first, double last) {
  const ScaleSupport& support = run.Support;
  const double parts = count == 0 ? 1 : count;
  const double firstMark = std::nearbyint(first - 1) + 1, lastMark = std::trunc(last == 0 ? parts : last);
  if (support.Law) {
    const double span = support.LastValue - support.FirstValue;
    if (!std::isfinite(span)) throw ScriptFault(FaultReason::EndlessScale);
    for (double mark : {firstMark, lastMark}) RequireReached(run, support.FirstValue + span * mark / parts);
  }
  NoticeFarMarks(run, parts, firstMark, lastMark);
  return {support, count, first, last};
}

std::optional<double> ReadInfinity(std::string_view text) {
  text = Trim(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  if (text != "∞") return std::nullopt;
  return isNegative ? -HUGE_VAL : HUGE_VAL;
}

ValueFormat ReadNotation(const RunContext& run, std::string_view text) {
  const auto format = ReadValueFormat(text);
  if (!format) throw ScriptFault(FaultReason::BadValueFormat, Shorten(Trim(text), 40));
  return format->Notation == ValueNotation::Plain ? run.PlainValues : *format;
}

std::optional<ScaleValue> ScaleValueOf(const RunContext& run, std::string_view text) {
  text = Trim(text);
  const bool isOwn = run.Support.HasOwnValues;
  const auto infinity = isOwn ? ReadInfinity(text) : std::nullopt;
  const auto value = infinity ? infinity : NumberOf(text, run.Separators);
  if (!value) return std::nullopt;
  const ScaleValue scaleValue{*value, text.ends_with("°")};
  if (run.Support.LogScale && !scaleValue.IsDirect) PositiveAndFinite(scaleValue.Value);
  if (isOwn && !scaleValue.IsDirect) RequireReached(run, scaleValue.Value);
  if (!scaleValue.IsDirect && !run.Support.Law) NoticeFarValue(run, scaleValue.Value);
  return scaleValue;
}

ScaleValue ReadScaleValue(const RunContext& run, const Parameters& parameters, std::size_t n) {
  const auto value = ScaleValueOf(run, parameters.Text(n));
  if (!value) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
  return *value;
}

std::vector<std::string> ReadList(const RunContext& run, std::string_view text) {
  std::vector<std::string> items;
  const std::vector<std::string_view> parts = SplitAt(text, run.Separators.Second);
  if (parts.size() == 1 || !Trim(parts[0]).empty()) items.emplace_back(parts[0]);
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const std::string_view name = Trim(parts[i]);
    if (!name.starts_with('%')) throw ScriptFault(FaultReason::NotAList, Shorten(name, 40));
    const std::string list = run.Substitute(name);
    for (std::string_view item : SplitAt(list, run.Separators.First)) items.emplace_back(item);
  }
  return items;
}

std::vector<std::optional<ScaleValue>> ReadScaleValues(const RunContext& run, const Parameters& parameters,
                                                       std::size_t n) {
  std::vector<std::optional<ScaleValue>> values;
  const std::string_view text = parameters.Text(n);
  for (const std::string& item : ReadList(run, text)) values.push_back(ScaleValueOf(run, item));
  const bool isList = text.find(run.Separators.Second) != std::string_view::npos;
  if (!isList && !values.front()) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
  return values;
}

}  // namespace vaxel
