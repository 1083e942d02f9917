// How the commands of the scale read what they have in common.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"
#include "scale/graduation.h"
#include "scale/value_text.h"

namespace vaxel {

// Without a support there is no scale: the line fails as a division by zero does. What needs values by their
// place, and came later to the language, fails with the reason alone.
void RequireSupport(const RunContext& run);
void RequireScale(const RunContext& run);

// The point itself; a coordinate that is not finite is a fault.
Point RequireFinitePoint(Point point);

// Calls use() at every mark of a graduation. An index out of its range is a fault.
template <class Graduation, class Use>
void ForEachMark(Graduation& graduation, Use use) {
  for (;;) {
    const StepResult step = graduation.Next();
    if (step == StepResult::Overflow) throw ScriptFault(FaultReason::Overflow);
    if (step == StepResult::End) return;
    use();
  }
}

// A value beyond a scale's law or table is a fault.
void RequireReached(const RunContext& run, double value);

// The marks of a scale of count equal intervals. Marks beyond a law or a table are a fault; a number of
// intervals that is not whole and marks far beyond the scale are noticed.
LinearGraduation ReadLinearGraduation(const RunContext& run, double count, double first, double last);

// The marks of a logarithmic scale that parameter n gives as "Interval[§End[§Start]]", from first to last; a
// first or a last of 0 is that of the scale. Values that are not above 0 are a fault, and those far beyond
// the scale are noticed.
LogGraduation ReadLogGraduation(const RunContext& run, const Parameters& parameters, std::size_t n,
                                double first, double last);

// "∞" or "-∞"; there is no value for any other text.
std::optional<double> ReadInfinity(std::string_view text);

// The notation of figures: E, P, S or a pattern; the standing one where there is none of these. A malformed
// pattern is a fault.
ValueFormat ReadNotation(const RunContext& run, std::string_view text);

// The scale value that a text gives, direct with "°" at its end; an empty text has none. One that lies
// farther beyond the ends of the scale than a tenth of it, as few are meant to, is noticed.
std::optional<ScaleValue> ScaleValueOf(const RunContext& run, std::string_view text);

// The scale value that parameter n gives. A missing one is a fault.
ScaleValue ReadScaleValue(const RunContext& run, const Parameters& parameters, std::size_t n);

// "Item[§%List]": the item itself, if there is one, and those that the listed variables hold, empty ones too.
std::vector<std::string> ReadList(const RunContext& run, std::string_view text);

// The scale values of such a list in parameter n, direct ones with "°" at their end. An empty item gives none
// in its place. An empty parameter is a fault, and so is a value that the scale has no place for.
std::vector<std::optional<ScaleValue>> ReadScaleValues(const RunContext& run, const Parameters& parameters,
                                                       std::size_t n);

}  // namespace vaxel
