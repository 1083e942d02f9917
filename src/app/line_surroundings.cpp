#include "app/line_surroundings.h"

#include "base/text.h"
#include "interpreter/line_reader.h"

namespace vaxel {

bool AppendContinued(std::string& before, std::string_view line) {
  if (!IsContinued(line)) return false;
  if (line.ends_with('_')) line.remove_suffix(1);
  before += DropLastCharacter(line);
  return true;
}

LineSurroundings::LineSurroundings(const ScriptSurvey& survey, std::size_t line,
                                   const ScriptSurvey::LineOf& lineOf) {
  // Each line of a command is read with all those before it: of one that goes over thousands of lines the
  // later ones are only told from their own words.
  constexpr std::size_t longest = 20'000;
  const std::size_t first = survey.FirstLineOf(line);
  for (std::size_t before = first; before < line && before_.size() < longest; ++before) {
    AppendContinued(before_, lineOf(before));
  }
  if (before_.size() >= longest) before_.clear();
  context_.Separators = survey.SeparatorsAt(first);
  context_.IsVariable = [&survey](std::string_view name) { return survey.HasVariable(name); };
  context_.Before = before_;
}

}  // namespace vaxel
