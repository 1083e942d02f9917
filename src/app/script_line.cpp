#include "app/script_line.h"

#include <algorithm>

#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/comparison.h"
#include "interpreter/line_reader.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// No run goes deeper, and a line of nothing but conditions must not take for ever.
constexpr std::size_t MostCommands = 100;

// The text between two places of the line.
std::string_view Between(std::string_view line, std::size_t begin, std::size_t end) {
  return line.substr(begin, std::max(begin, end) - begin);
}

// Cuts a condition; the result is the command behind it, empty where there is none.
std::string_view ReadCondition(std::string_view text, CommandInLine& command, ScriptLineParts& parts) {
  try {
    const Conditional conditional = SplitConditional(text);
    const std::size_t behind = EndOf(conditional.Condition, text);
    const std::size_t rest = conditional.Rest.data() ? BeginOf(conditional.Rest, text) : text.size();
    command.Text = conditional.Condition;
    command.Word = Trim(Between(text, behind, rest));
    command.Jumps = conditional.Jumps;
    if (!conditional.Jumps) return conditional.Rest;
    command.Target = conditional.Rest;
    parts.Comment = text.substr(rest).substr(WithoutComment(text.substr(rest)).size());
  } catch (const ScriptFault&) {
    command.Text = WithoutComment(text);  // the condition is not written to its end
    parts.Comment = text.substr(command.Text.size());
  }
  return {};
}

void ReadCommands(std::string_view text, const Separators& separators, ScriptLineParts& parts) {
  while (!text.empty()) {
    text = TrimLeft(text);
    if (IsBlankOrComment(text) || parts.Commands.size() == MostCommands) {
      parts.Comment = text.substr(WithoutComment(text).size());
      return;
    }
    if (ReadLabelLine(text, AllCommands(), separators)) {
      parts.Label = WithoutComment(text);
      parts.Comment = text.substr(parts.Label.size());
      return;
    }
    if (text.front() == '%' && WithoutComment(text).find('=') == std::string_view::npos) {
      parts.Variable = Trim(WithoutComment(text));
      parts.Comment = text.substr(WithoutComment(text).size());
      return;
    }
    const CutCommand cut = SplitCommand(text, AllCommands());
    CommandInLine command{cut.Keyword, AllCommands().Find(cut.Keyword), text.substr(text.size()), {}, {}};
    std::string_view next;
    const std::string_view behind = cut.Parameters.data() ? cut.Parameters : text.substr(text.size());
    if (command.IsCondition()) {
      next = ReadCondition(behind, command, parts);
    } else {
      command.Text = !command.Row || command.Row->TakesComments() ? WithoutComment(behind) : behind;
      parts.Comment = behind.substr(command.Text.size());
    }
    parts.Commands.push_back(command);
    text = next;
  }
}

}  // namespace

const CommandInLine* ScriptLineParts::CommandAt(std::string_view line, std::size_t offset) const {
  const CommandInLine* found = nullptr;
  for (const CommandInLine& command : Commands) {
    if (!found || BeginOf(command.Keyword, line) <= offset) found = &command;
  }
  return found;
}

ScriptLineParts ReadScriptLine(std::string_view line, const Separators& separators) {
  ScriptLineParts parts;
  ReadCommands(line, separators, parts);
  return parts;
}

LineParameters ParametersIn(const CommandInLine& command, const Separators& separators) {
  LineParameters parameters;
  if (!command.Row || command.IsCondition()) return parameters;
  parameters.Form = &FormOfLine(*command.Row, command.Text, separators);
  parameters.Texts = SplitParameters(*command.Row, *parameters.Form, command.Text, separators);
  parameters.Shift = PlaceInForm(*parameters.Form, parameters.Texts, 1) - 1;
  return parameters;
}

LineParameters::Place LineParameters::PlaceAt(std::string_view line, std::size_t offset,
                                              const Separators& separators) const {
  Place place;
  while (place.N < Texts.size() && EndOf(Texts[place.N - 1], line) < offset) ++place.N;
  if (Texts.empty()) return place;
  const std::string_view text = Texts[place.N - 1];
  const std::size_t begin = BeginOf(text, line);
  if (offset > begin) place.Part = CountOf(text.substr(0, offset - begin), separators.Second);
  return place;
}

}  // namespace vaxel
