#include "scale/value_steps.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <iterator>
#include <set>
#include <utility>

namespace vaxel {
namespace {

// What arithmetic may leave of a step.
constexpr double Nothing = 1e-9;

// The row of round steps: number 0 is 1, then come 2, 5, 10 and so on; before it 0.5, 0.2, 0.1.
struct RoundStep {
  // Beyond these there is no room for powers of ten.
  static constexpr int Least = -900, Most = 900;

  explicit RoundStep(int number) {
    constexpr std::array<double, 3> digits = {1, 2, 5};
    const int digit = (number % 3 + 3) % 3;
    exponent_ = (number - digit) / 3;
    digit_ = digits[static_cast<std::size_t>(digit)];
  }

  // k times the step, as its decimals are read.
  double Times(double k) const {
    const double power = std::pow(10.0, std::abs(exponent_));
    // Adding 0 takes the sign from a zero.
    return (exponent_ < 0 ? k * digit_ / power : k * digit_ * power) + 0.0;
  }
  double Value() const { return Times(1); }
  // The last multiple not above a value, and the first not below it, in steps.
  double Floor(double value) const { return std::floor(value / Value() + Nothing); }
  double Ceil(double value) const { return std::ceil(value / Value() - Nothing); }

 private:
  int exponent_ = 0;
  double digit_ = 1;
};

// The number of the smallest step that is not below a value above 0.
int NumberOfStepFrom(double value) {
  int number = 3 * static_cast<int>(std::floor(std::log10(value)));
  while (RoundStep(number).Value() < value * (1 - Nothing)) ++number;
  return number;
}

// How round a value is: the number of the largest step of which it is a multiple.
int RoundnessOf(double value) {
  if (value == 0 || std::isinf(value)) return INT_MAX;
  int number = NumberOfStepFrom(std::abs(value));
  while (!IsMultipleOf(value, RoundStep(number).Value())) --number;
  return number;
}

class ValueChooser {
 public:
  ValueChooser(double low, double high, const AreApart& areApart)
      : low_(low), high_(high), areApart_(areApart) {}
  // Only values of the choice are taken.
  ValueChooser(const ValueChoice& among, const AreApart& areApart)
      : low_(among.PieceEnds.front()), high_(among.PieceEnds.back()), areApart_(areApart), among_(&among) {}

  ValueChoice Choose();

 private:
  // A piece of the range; infinite ones have no values of their own.
  struct Piece {
    double Low = 0, High = 0;
    int Step = RoundStep::Most;  // its number
    double Third = 0;            // a value that counts besides, if there is room; 0: none
  };

  std::vector<double> CutsAbove(double low, double high, double side) const;
  std::vector<double> Ends() const;
  bool MayStand(double value) const;
  bool HasRoom(const Piece& piece, int number) const;
  bool MayStandIn(const Piece& piece, int number) const;
  int StepFor(const Piece& piece) const;
  void JoinSteps(std::vector<Piece>& pieces) const;
  std::vector<double> Thinned(std::vector<double> values) const;

  double low_, high_;
  const AreApart& areApart_;
  const ValueChoice* among_ = nullptr;
};

// The cuts on one side of 0, given by magnitude, between two magnitudes: those from which on there is room to
// 0 and to an infinite end.
std::vector<double> ValueChooser::CutsAbove(double low, double high, double side) const {
  const auto cut = [](int number) { return RoundStep(number).Value(); };
  const auto isApart = [&](double a, double b) { return side > 0 ? areApart_(a, b) : areApart_(-b, -a); };
  int number = std::isinf(high) ? (low > 0 ? NumberOfStepFrom(low) : 0) : NumberOfStepFrom(high) - 1;
  if (std::isinf(high)) {
    while (number < RoundStep::Most && isApart(cut(number), high)) ++number;
  }
  std::vector<double> cuts;
  for (; number > RoundStep::Least && cut(number) > low; --number) {
    if (low == 0 && !isApart(0, cut(number))) break;
    if (cut(number) < high) cuts.push_back(side * cut(number));
  }
  return cuts;
}

std::vector<double> ValueChooser::Ends() const {
  if (among_) return among_->PieceEnds;
  std::vector<double> ends = {low_, high_};
  const auto add = [&](const std::vector<double>& cuts) {
    ends.insert(ends.end(), cuts.begin(), cuts.end());
  };
  if (low_ < 0 && high_ > 0) ends.push_back(0);
  if (high_ > 0) add(CutsAbove(std::max(low_, 0.0), high_, 1));
  if (low_ < 0) add(CutsAbove(std::max(-high_, 0.0), -low_, -1));
  std::sort(ends.begin(), ends.end());
  return ends;
}

bool ValueChooser::MayStand(double value) const {
  if (!among_) return true;
  const double margin = std::isinf(value) ? 0 : Nothing * std::abs(value);
  const std::vector<double>& values = among_->Values;
  const auto found = std::lower_bound(values.begin(), values.end(), value - margin);
  return found != values.end() && *found <= value + margin;
}

// Whether all neighbours that lie in the piece, or on both sides of an end of it, have room.
bool ValueChooser::HasRoom(const Piece& piece, int number) const {
  const RoundStep step(number);
  const double first = step.Floor(piece.Low), last = step.Ceil(piece.High);
  if (last - first > static_cast<double>(MaxSeriesValues)) return false;
  const double margin = step.Value() * Nothing;
  for (double k = first; k < last; ++k) {
    const double from = step.Times(k), to = step.Times(k + 1);
    if (from < low_ - margin || to > high_ + margin) continue;
    if (!areApart_(from, to)) return false;
  }
  return true;
}

// Whether all multiples in the piece may stand.
bool ValueChooser::MayStandIn(const Piece& piece, int number) const {
  const RoundStep step(number);
  for (double k = step.Ceil(piece.Low); k <= step.Floor(piece.High); ++k) {
    if (!MayStand(step.Times(k))) return false;
  }
  return true;
}

int ValueChooser::StepFor(const Piece& piece) const {
  if (std::isinf(piece.Low) || std::isinf(piece.High)) return RoundStep::Most;
  const double reach = std::max(std::abs(piece.Low), std::abs(piece.High));
  // A step beyond all of the piece's values leaves it without any but 0.
  const int most = NumberOfStepFrom(reach) + 1;
  int number = NumberOfStepFrom(piece.High - piece.Low);
  while (number < most && !HasRoom(piece, number)) ++number;
  int best = most;
  for (; number > RoundStep::Least && HasRoom(piece, number); --number) {
    if (MayStandIn(piece, number)) best = number;
  }
  return best;
}

// Twos do not lead from 2 to 5 nor from 5 to 10, but they do from 2 to 10: where the one of these two pieces
// has them and the other has not, the upper one takes fives, and of the lower one 3 may take the place of 4.
void ValueChooser::JoinSteps(std::vector<Piece>& pieces) const {
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    Piece& piece = pieces[i];
    const bool hasTwos = ((piece.Step % 3) + 3) % 3 == 1;
    const double two = RoundStep(piece.Step).Value();
    // An even scale is a wider piece.
    const double width = (piece.High - piece.Low) / two;
    if (!hasTwos || width < 1 + Nothing || width > 2.5 + Nothing) continue;
    const auto meetsBadly = [&](double end) { return std::abs(std::abs(end) - 2.5 * two) < two * Nothing; };
    const bool joinsBefore = i > 0 && pieces[i - 1].Step == piece.Step;
    const bool joinsBehind = i + 1 < pieces.size() && pieces[i + 1].Step == piece.Step;
    const bool isBad = (meetsBadly(piece.Low) && !joinsBefore) || (meetsBadly(piece.High) && !joinsBehind);
    if (!isBad) continue;
    const double reach = std::max(std::abs(piece.Low), std::abs(piece.High));
    if (meetsBadly(reach)) {
      piece.Third = std::copysign(1.5 * two, piece.Low + piece.High);
    } else {
      ++piece.Step;
    }
  }
}

// Neighbours of different pieces may have no room: the rounder one stays, and of two the one nearer to 0.
std::vector<double> ValueChooser::Thinned(std::vector<double> values) const {
  std::vector<std::pair<int, double>> ranked;
  for (double value : values) ranked.emplace_back(-RoundnessOf(value), std::abs(value));
  std::vector<std::size_t> order(values.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return ranked[a] < ranked[b]; });
  std::set<double> kept;
  for (std::size_t i : order) {
    const double value = values[i];
    const auto behind = kept.lower_bound(value);
    if (behind != kept.end() && (*behind == value || !areApart_(value, *behind))) continue;
    if (behind != kept.begin() && !areApart_(*std::prev(behind), value)) continue;
    // The ends of a scale that runs all around meet.
    if (!kept.empty() && behind == kept.end() && !areApart_(*kept.begin(), value)) continue;
    if (!kept.empty() && behind == kept.begin() && !areApart_(value, *kept.rbegin())) continue;
    kept.insert(value);
  }
  return {kept.begin(), kept.end()};
}

ValueChoice ValueChooser::Choose() {
  const std::vector<double> ends = Ends();
  std::vector<Piece> pieces;
  for (std::size_t i = 1; i < ends.size(); ++i) {
    pieces.push_back({ends[i - 1], ends[i]});
    pieces.back().Step = StepFor(pieces.back());
  }
  JoinSteps(pieces);
  std::vector<double> values;
  for (double end : {low_, high_}) {
    if (std::isinf(end)) values.push_back(end);
  }
  std::set<int> steps;  // with which there are values but 0
  for (const Piece& piece : pieces) {
    if (std::isinf(piece.Low) || std::isinf(piece.High)) continue;
    const RoundStep step(piece.Step);
    for (double k = step.Ceil(piece.Low); k <= step.Floor(piece.High); ++k) {
      values.push_back(step.Times(k));
      if (k != 0) steps.insert(piece.Step);
    }
    if (piece.Third != 0) values.push_back(piece.Third);
  }
  ValueChoice choice;
  choice.PieceEnds = steps.size() == 1 ? std::vector{low_, high_} : ends;
  std::erase_if(values, [this](double value) { return !MayStand(value); });
  choice.Values = Thinned(std::move(values));
  return choice;
}

}  // namespace

std::optional<std::vector<double>> MultiplesBetween(double step, double from, double to) {
  const double first = std::ceil(std::min(from, to) / step - Nothing);
  const double last = std::floor(std::max(from, to) / step + Nothing);
  if (!(last - first < static_cast<double>(MaxSeriesValues))) return std::nullopt;
  std::vector<double> values;
  for (double i = 0; i <= last - first; ++i) values.push_back((first + i) * step + 0.0);
  return values;
}

bool IsMultipleOf(double value, double step) {
  constexpr double nothing = 1e-6;
  return std::abs(value / step - std::nearbyint(value / step)) < nothing;
}

ValueChoice ChooseValues(double from, double to, const AreApart& areApart) {
  if (from == to) return {{from}, {from, to}};
  return ValueChooser(std::min(from, to), std::max(from, to), areApart).Choose();
}

std::vector<double> ChooseAmong(const ValueChoice& choice, const AreApart& areApart) {
  if (choice.PieceEnds.front() == choice.PieceEnds.back()) return choice.Values;
  return ValueChooser(choice, areApart).Choose().Values;
}

}  // namespace vaxel
