#include <cstddef>
#include <string>
#include <string_view>

#include "base/text.h"
#include "base/utf8.h"
#include "commands/handlers.h"
#include "interpreter/script_fault.h"

namespace vaxel {

void RunCouleur(RunContext& run, const Parameters& parameters) {
  run.Surface.ForeColor = run.ColourOr(parameters.Whole(), Black);
}

namespace {

// Texts are searched for the separators again and again, which takes the longer the longer these are.
constexpr std::size_t LongestSeparator = 1000;  // characters

std::string ReadSeparator(const Parameters& parameters, std::size_t n) {
  const std::string_view text = parameters.Trimmed(n);
  if (CharacterCount(text) > LongestSeparator)
    throw ScriptFault(FaultReason::SeparatorTooLong, std::to_string(LongestSeparator));
  return std::string(text);
}

}  // namespace

void RunSeparateur(RunContext& run, const Parameters& parameters) {
  const std::string first = ReadSeparator(parameters, 1);
  const std::string second = ReadSeparator(parameters, 2);
  if (!first.empty()) run.Separators.First = first;
  if (!second.empty()) run.Separators.Second = second;
  ++run.SeparatorsVersion;
}

void RunZoomIni(RunContext& run, const Parameters& parameters) {
  run.NextZoom = parameters.RequiredNumber(1);
}

}  // namespace vaxel
