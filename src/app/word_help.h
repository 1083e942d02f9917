// What is said of a word of a script while the pointer rests on it.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/script_survey.h"
#include "app/script_tokens.h"
#include "app/syntax_help.h"
#include "drawing/colour.h"

namespace vaxel {

struct WordHelp {
  ShownRange Word;
  std::string Text;                // one line
  std::optional<Colour> Sample{};  // of a colour
};

struct WordKnowledge {
  const ScriptSurvey& Survey;
  HelpLanguage Language;
  // What a variable was worth in the last run; none where it had no value.
  const std::function<std::optional<std::string>(std::string_view name)>& ValueOf;
};

// The first line of a command's help, a variable's value, what a colour is made of; none where the unit of
// that number belongs to no such word. The word is counted in UTF-16 units from the line's start.
std::optional<WordHelp> HelpForWord(std::string_view line, std::size_t column, const LineContext& context,
                                    const WordKnowledge& knowledge);

}  // namespace vaxel
