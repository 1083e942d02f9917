#include "app/line_surroundings.h"

#include "base/text.h"

namespace vaxel {

LineSurroundings::LineSurroundings(const ScriptSurvey& survey, std::size_t line,
                                   const ScriptSurvey::LineOf& lineOf) {
  // Each line of a command is read with all those before it: of one that goes over thousands of lines the
  // later ones are only told from their own words.
  constexpr std::size_t longest = 20'000;
  const std::size_t first = survey.FirstLineOf(line);
  for (std::size_t before = first; before < line && before_.size() < longest; ++before) {
    std::string text = lineOf(before);
    if (text.ends_with('_')) text.pop_back();
    before_ += DropLastCharacter(text);
  }
  if (before_.size() >= longest) before_.clear();
  context_.Separators = survey.SeparatorsAt(first);
  context_.IsVariable = [&survey](std::string_view name) { return survey.HasVariable(name); };
  context_.Before = before_;
}

}  // namespace vaxel
