#include "scale/value_law.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vaxel {
namespace {

constexpr int TrialPlaces = 1000;
constexpr double NearInfinity = 1e9, Infinity = 1e12;  // where limits are looked for

double WithoutInfinity(double value) {
  return std::isinf(value) ? std::copysign(Infinity, value) : value;
}

// Distances 0, then from a millionth of a unit on.
std::vector<double> DistancesToInfinity(int count, double unit) {
  constexpr double nearest = 1e-6;
  std::vector<double> distances = {0};
  for (int i = 0; i < count - 1; ++i) {
    distances.push_back(unit * nearest * std::pow(Infinity / (unit * nearest), i / (count - 2.0)));
  }
  return distances;
}

std::vector<double> TrialValues(double first, double last) {
  std::vector<double> values;
  if (std::isfinite(first) && std::isfinite(last)) {
    for (int i = 0; i < TrialPlaces; ++i) {
      values.push_back(first + (last - first) * i / (TrialPlaces - 1.0));
    }
    return values;
  }
  if (std::isinf(first) && std::isinf(last)) {
    for (double distance : DistancesToInfinity(TrialPlaces / 2, 1)) {
      values.push_back(std::copysign(distance, last));
      if (distance != 0) values.insert(values.begin(), std::copysign(distance, first));
    }
    return values;
  }
  const bool endsInfinitely = std::isinf(last);
  const double end = endsInfinitely ? first : last;
  const double infinite = endsInfinitely ? last : first;
  const double unit = std::clamp(std::abs(end), 1.0, NearInfinity);
  for (double distance : DistancesToInfinity(TrialPlaces, unit)) {
    values.push_back(end + std::copysign(distance, infinite));
  }
  if (!endsInfinitely) std::reverse(values.begin(), values.end());
  return values;
}

bool HasLimit(const PlaceFunction& placeOf, double infinite) {
  constexpr double agreement = 0.0001;
  return std::abs(placeOf(std::copysign(NearInfinity, infinite)) -
                  placeOf(std::copysign(Infinity, infinite))) <= agreement;
}

// The value between low and high at which an ascending or descending function has a result; the nearer end
// where it has none.
template <class Function>
double Solve(const Function& function, double low, double high, double wanted) {
  const bool ascends = function(low) < function(high);
  const auto reaches = [&](double place) { return ascends ? place >= wanted : place <= wanted; };
  if (reaches(function(low))) return low;
  if (!reaches(function(high)) || function(high) == wanted) return high;
  // A double has no more steps between any two.
  constexpr int steps = 200;
  for (int i = 0; i < steps; ++i) {
    const double middle = low + (high - low) / 2;
    if (middle == low || middle == high) break;
    (reaches(function(middle)) ? high : low) = middle;
  }
  return std::abs(function(low) - wanted) < std::abs(function(high) - wanted) ? low : high;
}

// The slope of the parabola through three points at the first of them, as long as that does not turn the
// curve: steps and slopes of the two stretches, the nearer one first.
double EndSlope(double step, double nextStep, double slope, double nextSlope) {
  const double end = ((2 * step + nextStep) * slope - step * nextSlope) / (step + nextStep);
  return std::signbit(end) == std::signbit(slope) ? end : 0;
}

// The points' slopes all have one sign.
std::vector<double> SmoothSlopes(const std::vector<LawPoint>& points) {
  const std::size_t count = points.size();
  const auto step = [&](std::size_t i) { return points[i + 1].Value - points[i].Value; };
  const auto slope = [&](std::size_t i) { return (points[i + 1].Reading - points[i].Reading) / step(i); };
  if (count == 2) return {slope(0), slope(0)};
  std::vector<double> slopes(count);
  for (std::size_t i = 1; i + 1 < count; ++i) {
    const double before = step(i) * 2 + step(i - 1);
    const double behind = step(i) + step(i - 1) * 2;
    slopes[i] = (before + behind) / (before / slope(i - 1) + behind / slope(i));
  }
  slopes[0] = EndSlope(step(0), step(1), slope(0), slope(1));
  slopes[count - 1] = EndSlope(step(count - 2), step(count - 3), slope(count - 2), slope(count - 3));
  return slopes;
}

}  // namespace

FunctionLaw::FunctionLaw(PlaceFunction placeOf, double first, double last)
    : placeOf_(std::move(placeOf)),
      low_(WithoutInfinity(std::min(first, last))),
      high_(WithoutInfinity(std::max(first, last))),
      lowIsInfinite_(std::isinf(std::min(first, last))),
      highIsInfinite_(std::isinf(std::max(first, last))) {}

double FunctionLaw::ReadingOf(double value) const {
  return At(std::clamp(value, low_, high_));
}

double FunctionLaw::ValueOf(double reading) const {
  const double value = Solve([this](double at) { return At(at); }, low_, high_, reading);
  if (value == low_ && lowIsInfinite_) return -HUGE_VAL;
  return value == high_ && highIsInfinite_ ? HUGE_VAL : value;
}

LawFault FindLawFault(const PlaceFunction& placeOf, double first, double last) {
  using Kind = LawFault::Kind;
  // Far below what can be seen, but above what is left of a difference.
  constexpr double nothing = 1e-9;
  double before = 0, valueBefore = 0;
  int direction = 0;
  bool isFirst = true;
  for (double value : TrialValues(first, last)) {
    const double place = placeOf(value);
    const double way = isFirst ? 0 : place - before;
    if (std::abs(way) > nothing) {
      const int side = way > 0 ? 1 : -1;
      if (direction == -side) return {Kind::Turns, valueBefore};
      direction = side;
    }
    // A creep that is too small to count is compared with where it began.
    if (isFirst || std::abs(way) > nothing) before = place;
    valueBefore = value;
    isFirst = false;
  }
  for (double end : {first, last}) {
    if (std::isinf(end) && !HasLimit(placeOf, end)) return {Kind::NoLimit, end};
  }
  return direction == 0 ? LawFault{Kind::Stands, first} : LawFault{};
}

std::size_t FirstUnordered(const std::vector<LawPoint>& points) {
  const auto side = [](double from, double to) { return from < to ? 1 : from > to ? -1 : 0; };
  for (std::size_t i = 1; i < points.size(); ++i) {
    const int value = side(points[i - 1].Value, points[i].Value);
    const int reading = side(points[i - 1].Reading, points[i].Reading);
    const bool goesOn = value == side(points[0].Value, points[1].Value) &&
                        reading == side(points[0].Reading, points[1].Reading);
    if (value == 0 || reading == 0 || !goesOn) return i;
  }
  return points.size();
}

TableLaw::TableLaw(std::vector<LawPoint> points, bool isDirect, bool isStraight)
    : points_(std::move(points)), isDirect_(isDirect) {
  if (points_.front().Value > points_.back().Value) std::reverse(points_.begin(), points_.end());
  if (!isStraight) slopes_ = SmoothSlopes(points_);
}

double TableLaw::Between(std::size_t left, double value) const {
  const LawPoint& from = points_[left];
  const LawPoint& to = points_[left + 1];
  const double step = to.Value - from.Value;
  const double t = (value - from.Value) / step;
  const double rise = to.Reading - from.Reading;
  if (slopes_.empty()) return from.Reading + rise * t;
  const double start = slopes_[left] * step, end = slopes_[left + 1] * step;
  return from.Reading + t * (start + t * (3 * rise - 2 * start - end + t * (start + end - 2 * rise)));
}

double TableLaw::ReadingOf(double value) const {
  value = std::clamp(value, points_.front().Value, points_.back().Value);
  const auto right = std::upper_bound(points_.begin() + 1, points_.end() - 1, value,
                                      [](double at, const LawPoint& point) { return at < point.Value; });
  if (value == right->Value) return right->Reading;
  return Between(static_cast<std::size_t>(right - points_.begin()) - 1, value);
}

double TableLaw::ValueOf(double reading) const {
  const bool ascends = points_.front().Reading < points_.back().Reading;
  const auto right = std::find_if(points_.begin() + 1, points_.end() - 1, [&](const LawPoint& point) {
    return ascends ? reading <= point.Reading : reading >= point.Reading;
  });
  const auto left = static_cast<std::size_t>(right - points_.begin()) - 1;
  return Solve([&](double value) { return Between(left, value); }, points_[left].Value, right->Value,
               reading);
}

}  // namespace vaxel
