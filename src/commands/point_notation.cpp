#include "commands/point_notation.h"

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::string_view DegreeSign = "°";

using Mark = Parameters::Mark;

bool IsRelative(std::string_view text) {
  return text.ends_with('R') || text.ends_with('r');
}

ScriptFault BadPoint(std::string_view a, std::string_view b) {
  return ScriptFault::Arithmetic(FaultReason::BadPoint, Shorten(a, 40) + ", " + Shorten(b, 40));
}

double ValueOf(std::string_view text, const Separators& separators) {
  const std::optional<double> value = NumberOf(text, separators);
  if (value) return *value;
  if (!text.empty()) FailExpression(text);
  throw ScriptFault::Arithmetic(FaultReason::MissingCoordinate);
}

double Coordinate(std::string_view text, double reference, EmptyCoordinate empty,
                  const Separators& separators) {
  if (text.empty() && empty == EmptyCoordinate::Reference) return reference;
  const double value = ValueOf(text, separators);
  return IsRelative(text) ? reference + value : value;
}

double Absolute(const Parameters::MarkedNumber& known, double reference) {
  return known.What == Mark::Relative ? reference + known.Value : known.Value;
}

Point Polar(Point reference, double directionDegrees, double length) {
  const double direction = directionDegrees * RadiansPerDegree;
  return {reference.X + length * std::cos(direction), reference.Y + length * std::sin(direction)};
}

}  // namespace

Point ReadPoint(const Parameters& parameters, std::size_t n, Point reference, EmptyCoordinate empty) {
  const auto knownA = parameters.KnownNumber(n),
             knownB = knownA ? parameters.KnownNumber(n + 1) : std::nullopt;
  if (knownB && knownB->What != Mark::Degrees) {
    if (knownA->What != Mark::Degrees)
      return {Absolute(*knownA, reference.X), Absolute(*knownB, reference.Y)};
    if (knownB->What == Mark::None) return Polar(reference, knownA->Value, knownB->Value);
  }
  const std::string_view a = parameters.Trimmed(n);
  const std::string_view b = parameters.Trimmed(n + 1);
  const Separators& separators = parameters.Separators();
  if (b.ends_with(DegreeSign)) throw BadPoint(a, b);
  if (!a.ends_with(DegreeSign)) {
    return {Coordinate(a, reference.X, empty, separators), Coordinate(b, reference.Y, empty, separators)};
  }
  if (IsRelative(b) || IsRelative(DropLastCharacter(a))) throw BadPoint(a, b);
  const double direction = ValueOf(a, separators);
  return Polar(reference, direction, ValueOf(b, separators));
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
