#include "commands/point_notation.h"

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

using Mark = Parameters::Mark;

ScriptFault BadPoint(const Parameters& parameters, std::size_t n) {
  return ScriptFault::Arithmetic(FaultReason::BadPoint, Shorten(parameters.Trimmed(n), 40) + ", " +
                                                            Shorten(parameters.Trimmed(n + 1), 40));
}

[[noreturn]] void FailCoordinate(const Parameters& parameters, std::size_t n) {
  if (!parameters.IsEmpty(n)) FailExpression(parameters.Trimmed(n));
  throw ScriptFault::Arithmetic(FaultReason::MissingCoordinate);
}

double RequiredValue(const Parameters& parameters, std::size_t n) {
  const std::optional<double> value = parameters.Number(n);
  if (!value) FailCoordinate(parameters, n);
  return *value;
}

double Coordinate(const Parameters& parameters, std::size_t n, double reference, EmptyCoordinate empty) {
  const std::optional<double> value = parameters.Number(n);
  if (value) return parameters.MarkOf(n) == Mark::Relative ? reference + *value : *value;
  if (empty == EmptyCoordinate::Fault || !parameters.IsEmpty(n)) FailCoordinate(parameters, n);
  return reference;
}

// A coordinate that can be told at a glance, as nearly all can; no fault.
std::optional<double> PlainCoordinate(const Parameters& parameters, std::size_t n, double reference,
                                      EmptyCoordinate empty) {
  const auto* const known = parameters.Known(n);
  if (known && known->What == Mark::None) return known->Value;
  const bool isReference = !known && empty == EmptyCoordinate::Reference && parameters.IsEmpty(n);
  return isReference ? std::optional(reference) : std::nullopt;
}

Point Polar(Point reference, double directionDegrees, double length) {
  const double direction = directionDegrees * RadiansPerDegree;
  return {reference.X + length * std::cos(direction), reference.Y + length * std::sin(direction)};
}

}  // namespace

Point ReadPoint(const Parameters& parameters, std::size_t n, Point reference, EmptyCoordinate empty) {
  const auto x = PlainCoordinate(parameters, n, reference.X, empty);
  const auto y = x ? PlainCoordinate(parameters, n + 1, reference.Y, empty) : std::nullopt;
  if (x && y) return {*x, *y};
  const Mark first = parameters.MarkOf(n), second = parameters.MarkOf(n + 1);
  const bool isDirection = first == Mark::Degrees || first == Mark::Both;
  const bool isPolar = first == Mark::Degrees && second == Mark::None;
  const bool isCartesian = !isDirection && (second == Mark::None || second == Mark::Relative);
  if (!isPolar && !isCartesian) throw BadPoint(parameters, n);
  if (isCartesian) {
    return {Coordinate(parameters, n, reference.X, empty), Coordinate(parameters, n + 1, reference.Y, empty)};
  }
  const double direction = RequiredValue(parameters, n);
  return Polar(reference, direction, RequiredValue(parameters, n + 1));
}

Point ReadPlace(const RunContext& run, const Parameters& parameters, std::size_t n) {
  return run.Surface.Origin() +
         ReadPoint(parameters, n, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
}

TwoPlaces ReadTwoPlaces(const RunContext& run, const Parameters& parameters) {
  const Point origin = run.Surface.Origin();
  const Point first = ReadPlace(run, parameters, 1);
  return {first, origin + ReadPoint(parameters, 3, first - origin, EmptyCoordinate::Reference)};
}

}  // namespace vaxel
