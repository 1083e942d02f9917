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

namespace vaxel {

// Without a support there is no scale: the line fails as a division by zero does.
void RequireSupport(const RunContext& run);

// A fault for a coordinate that is not finite.
Point RequireFinitePoint(Point point);

// Calls use() at every mark of a graduation; a fault for an index out of its range.
template <class Graduation, class Use>
void ForEachMark(Graduation& graduation, Use use) {
  for (;;) {
    const StepResult step = graduation.Next();
    if (step == StepResult::Overflow) throw ScriptFault(FaultReason::Overflow);
    if (step == StepResult::End) return;
    use();
  }
}

// The marks of a logarithmic scale that parameter n gives as "Interval[§End[§Start]]", from first to last; 0
// is the end of the scale. A fault for values that are not above 0.
LogGraduation ReadLogGraduation(const RunContext& run, const Parameters& parameters, std::size_t n,
                                double first, double last);

// The scale value that parameter n gives. A fault for a missing one.
ScaleValue ReadScaleValue(const RunContext& run, const Parameters& parameters, std::size_t n);

// "Item[§%List]": the item itself, if there is one, and those that the listed variables hold, empty ones too.
std::vector<std::string> ReadList(const RunContext& run, std::string_view text);

// The scale values of such a list in parameter n, direct ones with "°" behind them; none in the place of an
// empty item. A fault for an empty parameter and for a value that a logarithmic scale has no place for.
std::vector<std::optional<ScaleValue>> ReadScaleValues(const RunContext& run, const Parameters& parameters,
                                                       std::size_t n);

}  // namespace vaxel
