// A logical line of a script in its parts, as the interpreter would cut it, for those who help to write it.
// A line that is not finished, or is no line at all, has parts too: nothing here fails.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "commands/parameter_list.h"
#include "interpreter/command_row.h"
#include "interpreter/variables.h"

namespace vaxel {

// A command in a line; several stand in one with IF. All texts are views of the line, and those that are
// missing are empty.
struct CommandInLine {
  std::string_view Keyword;         // trimmed, as written
  const CommandRow* Row = nullptr;  // null: unknown
  std::string_view Text;            // of the parameters, without a comment; of a condition, the condition
  std::string_view Word;            // of a condition: THEN, GOTO
  std::string_view Target;          // of a condition that jumps
  bool Jumps = false;

  bool IsCondition() const { return Row && Row->Rules.Form == LineForm::Condition; }
  bool IsAssignment() const { return Row && Row->Rules.Form == LineForm::Assignment; }
};

struct ScriptLineParts {
  // From the first to the one that is last behind THEN. A label, a comment and a line that is only a variable
  // have none.
  std::vector<CommandInLine> Commands;
  std::string_view Label;     // with its ":" and what follows it
  std::string_view Variable;  // that holds the whole line
  std::string_view Comment;   // with its apostrophe

  // The command in which a byte of the line lies, or after which it comes; null where there is none.
  const CommandInLine* CommandAt(std::string_view line, std::size_t offset) const;
};

ScriptLineParts ReadScriptLine(std::string_view line, const Separators& separators);

// Where a text that is a view of the line begins and ends in it.
inline std::size_t BeginOf(std::string_view part, std::string_view line) {
  return static_cast<std::size_t>(part.data() - line.data());
}
inline std::size_t EndOf(std::string_view part, std::string_view line) {
  return BeginOf(part, line) + part.size();
}

// The parameters of a command in a line.
struct LineParameters {
  const ParameterForm* Form = nullptr;  // null: nothing is known of them
  std::vector<std::string_view> Texts;  // blanks included
  std::size_t Shift = 0;                // of the line's numbers against those of the form
  std::size_t PlaceOf(std::size_t n) const { return n + Shift; }
  // What the line's parameter n is; null where that is unknown.
  const ParameterPartList* At(std::size_t n) const { return Form ? Form->At(PlaceOf(n)) : nullptr; }
  // The number of the parameter in which this place of the line lies, from 1, and of its part, from 0.
  struct Place {
    std::size_t N = 1, Part = 0;
  };
  Place PlaceAt(std::string_view line, std::size_t offset, const Separators& separators) const;
};

LineParameters ParametersIn(const CommandInLine& command, const Separators& separators);

}  // namespace vaxel
