// Which values of a scale have marks and figures when these are chosen by value: the multiples of a step, or
// those that a scale has room for.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace vaxel {

// No series has as many values; one that would have is a mistake.
inline constexpr std::size_t MaxSeriesValues = 1'000'000;

// The multiples of the step, which is above 0, between two values in either order, ascending. A multiple may
// lie a billionth of a step beyond an end. There is no result for too many of them, as of an infinite range.
std::optional<std::vector<double>> MultiplesBetween(double step, double from, double to);

// Whether a value is a multiple of the step, but for what arithmetic leaves of a difference.
bool IsMultipleOf(double value, double step);

// Whether two values next to each other in a series have room.
using AreApart = std::function<bool(double, double)>;

// Values that were chosen, ascending, and the ends of the pieces in each of which one step was taken. An even
// scale has one step throughout, and is one piece.
struct ValueChoice {
  std::vector<double> Values;
  std::vector<double> PieceEnds;
};

// Round values between two, in either order and perhaps infinite, as close as there is room for.
//
// The range is cut at 0 and at the values 1, 2 and 5·10^n on both sides of it. Each piece has the multiples
// of the smallest step of 1, 2 or 5·10^n with which all neighbours in it have room; where steps change and
// neighbours would still meet, the rounder one stays, or 3·10^n in place of 4·10^n. Infinite ends are values
// of the series, too.
ValueChoice ChooseValues(double from, double to, const AreApart& areApart);

// Those of the chosen values, ascending, that have more room. Each piece has one step again, so that an even
// scale stays even.
std::vector<double> ChooseAmong(const ValueChoice& choice, const AreApart& areApart);

}  // namespace vaxel
