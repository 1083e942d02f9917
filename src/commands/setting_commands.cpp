#include <string>

#include "commands/handlers.h"

namespace vaxel {

void RunCouleur(RunContext& run, const Parameters& parameters) {
  run.Surface.ForeColor = run.ColourOr(parameters.Whole(), Black);
}

void RunSeparateur(RunContext& run, const Parameters& parameters) {
  const std::string first(parameters.Trimmed(1));
  const std::string second(parameters.Trimmed(2));
  if (!first.empty()) run.Separators.First = first;
  if (!second.empty()) run.Separators.Second = second;
  ++run.SeparatorsVersion;
}

void RunZoomIni(RunContext& run, const Parameters& parameters) {
  run.NextZoom = parameters.RequiredNumber(1);
}

}  // namespace vaxel
