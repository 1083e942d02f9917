#include <cmath>
#include <string>
#include <string_view>

#include "commands/handlers.h"
#include "interpreter/script_fault.h"
#include "text/number_text.h"
#include "text/text.h"

namespace vaxel {
namespace {

// The current point is kept as a place on the surface; taking the origin from it leaves a remainder far
// below anything that can be drawn.
std::string CoordinateText(double value) {
  return NumberText(std::round(value * 1e9) / 1e9);
}

void StoreIn(RunContext& run, std::string_view name, const std::string& value) {
  if (!name.starts_with('%')) throw ScriptFault(FaultReason::UnknownVariable, Shorten(name, 60));
  run.Level().Variables.Set(name, value);
}

}  // namespace

void RunCurrentPoint(RunContext& run, const Parameters& parameters) {
  const Point point = run.Surface.CurrentScriptPoint();
  const std::string x = CoordinateText(point.X);
  const std::string y = CoordinateText(point.Y);
  if (Trim(parameters.Whole()).empty()) {
    run.WriteComment("  ' " + x + ", " + y);
    return;
  }
  StoreIn(run, parameters.Trimmed(1), x);
  StoreIn(run, parameters.Trimmed(2), y);
}

}  // namespace vaxel
