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

// What comes of a parameter that is read as a coordinate and gives no number.
double NoCoordinate(const Parameters& parameters, std::size_t n) {
  const std::string_view text = parameters.Trimmed(n);
  if (!text.empty()) FailExpression(text);
  throw ScriptFault::Arithmetic(FaultReason::MissingCoordinate);
}

double RequiredValue(const Parameters& parameters, std::size_t n) {
  const std::optional<double> value = parameters.Number(n);
  return value ? *value : NoCoordinate(parameters, n);
}

double Coordinate(const Parameters& parameters, std::size_t n, double reference, EmptyCoordinate empty) {
  const std::optional<double> value = parameters.Number(n);
  if (value) return parameters.MarkOf(n) == Mark::Relative ? reference + *value : *value;
  const bool isReference = empty == EmptyCoordinate::Reference && parameters.Trimmed(n).empty();
  return isReference ? reference : NoCoordinate(parameters, n);
}

Point Polar(Point reference, double directionDegrees, double length) {
  const double direction = directionDegrees * RadiansPerDegree;
  return {reference.X + length * std::cos(direction), reference.Y + length * std::sin(direction)};
}

}  // namespace

Point ReadPoint(const Parameters& parameters, std::size_t n, Point reference, EmptyCoordinate empty) {
  const auto* const x = parameters.Known(n);
  const auto* const y = parameters.Known(n + 1);
  if (x && y && x->What == Mark::None && y->What == Mark::None) return {x->Value, y->Value};
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
