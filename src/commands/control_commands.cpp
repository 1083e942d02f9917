#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/assignment.h"
#include "commands/file_notation.h"
#include "commands/handlers.h"
#include "commands/point_notation.h"
#include "interpreter/comparison.h"
#include "interpreter/compiled_line.h"
#include "interpreter/data_fields.h"
#include "interpreter/evaluator.h"
#include "interpreter/line_reader.h"
#include "interpreter/run.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

class CompiledGoto : public CompiledCommand {
 public:
  explicit CompiledGoto(std::string_view target) : jump_(target) {}

  void Run(RunContext& run) override {
    if (jump_.Take(run)) HandleEvents(run);
  }

 private:
  Jump jump_;
};

// What comes of a condition that holds: a jump, or a command in the same line.
class Consequence {
 public:
  // The text of the condition's line must live as long.
  explicit Consequence(const Conditional& conditional) : rest_(conditional.Rest) {
    if (!conditional.Jumps) {
      // Who writes this expects a block of lines, also where the condition does not hold.
      if (IsBlankOrComment(rest_)) throw ScriptFault(FaultReason::MissingCommand);
      command_.emplace(rest_);
    } else if (rest_.find('%') == std::string_view::npos) {
      jump_.emplace(rest_);
    }
  }

  void Run(RunContext& run) {
    if (jump_) {
      jump_->Take(run);
    } else if (command_) {
      command_->Run(run);
    } else {
      const std::string target = run.Substitute(rest_);
      Jump(Trim(target)).Take(run);
    }
  }

 private:
  std::string_view rest_;
  std::optional<Jump> jump_;
  std::optional<FollowingCommand> command_;
};

// A comparison, and what comes of it.
class CompiledConditional : public CompiledCommand {
 public:
  CompiledConditional(std::string_view text, bool comparesTexts)
      : text_(text), comparesTexts_(comparesTexts) {}

  void Run(RunContext& run) override {
    HandleEvents(run);
    if (!consequence_) Split(run);
    const std::optional<bool> known = comparison_.Result(run.Level().Variables);
    if (known ? *known : IsTrue(run, run.Substitute(condition_), comparesTexts_)) consequence_->Run(run);
  }

 private:
  void Split(RunContext& run) {
    const Conditional conditional = SplitConditional(text_);
    consequence_.emplace(conditional);
    condition_ = conditional.Condition;
    if (!comparesTexts_) comparison_.Compile(condition_, run);
  }

  std::string_view text_, condition_;
  bool comparesTexts_;
  CompiledComparison comparison_;
  std::optional<Consequence> consequence_;
};

// What happens where a variable has no value yet.
class CompiledDefault : public CompiledCommand {
 public:
  explicit CompiledDefault(std::string_view text) : text_(text) {}

  void Run(RunContext& run) override {
    HandleEvents(run);
    if (!consequence_) {
      const Conditional conditional = SplitConditional(text_);
      name_ = run.SettableName(conditional.Condition);
      consequence_.emplace(conditional);
    }
    if (!run.Level().Variables.Find(name_)) consequence_->Run(run);
  }

 private:
  std::string_view text_;
  std::string name_;
  std::optional<Consequence> consequence_;
};

bool IsActive(const RunContext& run, std::string_view fileName) {
  const auto end = run.Levels.begin() + static_cast<std::ptrdiff_t>(run.CurrentLevel);
  return std::any_of(run.Levels.begin(), end, [&](const ScriptLevel& level) {
    return run.Host.FullFileName(level.FileName) == fileName;
  });
}

// One level more than there may be: the user chooses between the end of the run and going on without it.
void RefuseInclusion(RunContext& run, const std::string& fileName) {
  const ScriptLevel& level = run.Level();
  const bool isSelf = !fileName.empty() && IsActive(run, run.Host.FullFileName(fileName));
  const TextId text = isSelf ? TextId::DepthExceededBySelf : TextId::DepthExceeded;
  const std::string message = run.Message(text, std::to_string(RunContext::MaxLevels));
  if (!run.Host.Confirm(BoxKind::IncludeDepth, level.FileName, level.Line.Number, "Vaxel", message)) return;
  run.Level().Text = "Loop";
  throw RunEnded{RunEnd::Failed};
}

// A coordinate that is left out is 0.
Point ReadPosition(const RunContext& run, const Parameters& parameters) {
  Point position = ReadPoint(parameters, 2, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
  if (parameters.Trimmed(2).empty()) position.X = 0;
  if (parameters.Trimmed(3).empty()) position.Y = 0;
  return position;
}

// The text with its references replaced, or as it stands when it is marked as literal; the mark remains.
std::string Replaced(const RunContext& run, std::string_view text) {
  return IsLiteral(text) ? std::string(text) : run.Substitute(text);
}

bool IsNamedArgument(std::string_view text) {
  return Trim(text).starts_with('%') && text.find('=') != std::string_view::npos;
}

// A variable of an included script, and its value.
struct Argument {
  std::string Name, Value;
  bool TakesRest = false;  // all parameters that follow belong to the value
};

// "%Name" with one of the forms of an assignment, or a value for the variable that is named by its place:
// "%1", "%2", …
Argument ReadArgument(RunContext& run, const Parameters& parameters, std::size_t n, std::size_t place) {
  std::string_view text = parameters.Text(n);
  Argument argument{"%" + std::to_string(place), {}};
  if (IsNamedArgument(text)) {
    const std::size_t equals = text.find('=');
    argument.Name = run.SettableName(Trim(text.substr(0, equals)));
    text = text.substr(equals + 1);
    if (text.starts_with('=')) {
      argument.Value = NumberText(AssignedNumber(run, text.substr(1)));
      return argument;
    }
    if (text.starts_with('<')) {
      argument.Value = TrimText(parameters.Rest(n).substr(equals + 2));
      argument.TakesRest = true;
      return argument;
    }
  }
  argument.Value = TrimText(Replaced(run, text));
  std::replace(argument.Value.begin(), argument.Value.end(), ',', '.');
  return argument;
}

void ReadArguments(RunContext& run, const Parameters& parameters, Inclusion& inclusion) {
  constexpr std::size_t first = 4;
  std::size_t length = 0;
  for (std::size_t n = first; n <= parameters.Count(); ++n) {
    if (Trim(parameters.Text(n)).empty()) continue;
    Argument argument = ReadArgument(run, parameters, n, n - first + 1);
    const auto isSame = [&](const auto& known) { return EqualIgnoringCase(known.first, argument.Name); };
    if (std::any_of(inclusion.Variables.begin(), inclusion.Variables.end(), isSame)) {
      throw ScriptFault(FaultReason::GivenTwice, Shorten(argument.Name, 60));
    }
    length += argument.Value.size();
    run.RequireRoom(length);
    inclusion.Variables.emplace_back(std::move(argument.Name), std::move(argument.Value));
    if (argument.TakesRest) return;
  }
}

// The answer to a question about a variable, whose value is proposed; none when the run is to end.
std::optional<Answer> Ask(RunContext& run, const std::string& prompt, const std::string& name) {
  const ScriptLevel& level = run.Level();
  const std::string* const present = level.Variables.Find(name);
  Answer answer = run.Host.Ask(level.FileName, level.Line.Number, prompt, present ? *present : "");
  if (answer.How == Answer::Kind::Unavailable) {
    throw ScriptFault(FaultReason::NoAnswer, Shorten(prompt, ShownLength));
  }
  if (answer.How == Answer::Kind::Given) return answer;
  run.EndAllLevels();
  return std::nullopt;
}

// What an answer is worth as an expression. Where that is nothing, or only its beginning is one, the reason
// says so. An answer that was given beforehand and is worth nothing is a fault: it cannot be asked for again.
Evaluation ReadAnswer(RunContext& run, const Answer& answer, std::string& reason) {
  std::string expression;
  try {
    expression = run.Substitute(answer.Text);
  } catch (const ScriptFault& fault) {
    if (answer.IsPrepared) throw;
    reason = fault.Description(run.Strings, run.LangBase);
    return {};
  }
  const Evaluation value = Evaluate(expression, run.Separators.First);
  if (!value.HasValue) {
    if (answer.IsPrepared) throw ScriptFault(FaultReason::EmptyAnswer);
    reason = run.Message(TextId::EmptyAnswer);
  } else if (!value.Complete) {
    reason = run.Message(TextId::AnswerIsNoExpression, Shorten(answer.Text, ShownLength));
  }
  return value;
}

// Asks until the answer is an expression.
void AskNumber(RunContext& run, const std::string& prompt, const std::string& name) {
  for (std::string reason;;) {
    const auto answer = Ask(run, reason.empty() ? prompt : reason + "\n" + prompt, name);
    if (!answer) return;
    reason.clear();
    const Evaluation value = ReadAnswer(run, *answer, reason);
    if (reason.empty() || answer->IsPrepared) {
      if (!value.Complete) {
        run.Notice(TextId::AnswerWasCut, Shorten(answer->Text, ShownLength), NumberText(value.Value));
      }
      run.Level().Variables.SetNumber(name, value.Value);
      return;
    }
    HandleEvents(run);
  }
}

// The separator of fields as LVar names it; a TAB and a blank cannot be written as such.
std::string_view FieldSeparator(std::string_view name) {
  if (EqualIgnoringCase(name, "TAB")) return "\t";
  return name.empty() ? " " : name;
}

}  // namespace

std::unique_ptr<CompiledCommand> CompileIF(std::string_view, std::string_view text) {
  return std::make_unique<CompiledConditional>(text, false);
}

std::unique_ptr<CompiledCommand> CompileIFT(std::string_view, std::string_view text) {
  return std::make_unique<CompiledConditional>(text, true);
}

std::unique_ptr<CompiledCommand> CompileIFNDEF(std::string_view, std::string_view text) {
  return std::make_unique<CompiledDefault>(text);
}

void RunGoto(RunContext& run, const Parameters& parameters) {
  if (Jump(Trim(parameters.Whole())).Take(run)) HandleEvents(run);
}

std::unique_ptr<CompiledCommand> CompileGoto(std::string_view, std::string_view text) {
  if (text.find('%') != std::string_view::npos) return nullptr;
  return std::make_unique<CompiledGoto>(Trim(text));
}

void RunStop(RunContext& run, const Parameters&) {
  run.EndLevel();
}

void RunFichier(RunContext& run, const Parameters& parameters) {
  // Files that include others many times run nearly for ever without any jump.
  HandleEvents(run);
  const std::string name(TextOf(Replaced(run, parameters.Text(1))));
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "1");
  const std::string fileName = FindFile(run, name, FileUse::Script);
  if (run.CurrentLevel == RunContext::MaxLevels) {
    RefuseInclusion(run, fileName);
    return;
  }
  Inclusion inclusion{fileName, ReadTextFile(run, fileName, name), {}, {}};
  for (const std::size_t n : {2U, 3U}) {
    if (IsNamedArgument(parameters.Text(n))) {
      throw ScriptFault(FaultReason::MissingPosition, Shorten(parameters.Trimmed(n), ShownLength));
    }
  }
  // They stand after an empty parameter, as one variable may hold both coordinates.
  const std::string& separator = run.Separators.First;
  const std::string places = run.Substitute(separator + std::string(parameters.Text(2)) + separator +
                                            std::string(parameters.Text(3)));
  Parameters position;
  position.Assign(places, run.Separators);
  inclusion.Position = ReadPosition(run, position);
  ReadArguments(run, parameters, inclusion);
  RunIncluded(run, std::move(inclusion));
}

void RunOpen(RunContext& run, const Parameters& parameters) {
  const std::string_view name = TextOf(parameters.Text(1));
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "1");
  run.Level().Data.Open(ReadTextFile(run, RequireFile(run, name, FileUse::Data), name));
}

void RunLVar(RunContext& run, const Parameters& parameters) {
  if (parameters.IsEmpty(1)) throw ScriptFault(FaultReason::MissingName, "LVar = %L");
  DataFile& data = run.Level().Data;
  if (!data.IsOpen()) throw ScriptFault(FaultReason::NoDataFile);
  const std::size_t before = data.Position();
  const std::string_view line = data.Next();
  // The comments behind the line are read with it.
  run.Work.Add(data.Position() - before);
  if (line.size() > MaxTextLength) throw ScriptFault(FaultReason::TextTooLong);
  std::vector<std::string_view> names;
  for (std::size_t n = 1; n <= parameters.Count(); ++n) names.push_back(parameters.Trimmed(n));
  const bool namesSeparator = names.size() > 1 && !names.back().starts_with('%');
  const std::string_view separator = namesSeparator ? FieldSeparator(names.back()) : std::string_view();
  if (namesSeparator) names.pop_back();
  // A line for one variable alone is taken as it stands.
  const bool isWhole = names.size() == 1 && !namesSeparator;
  std::vector<std::string> fields =
      isWhole ? std::vector<std::string>{std::string(line)} : SplitFields(line, names.size(), separator);
  if (isWhole) std::replace(fields[0].begin(), fields[0].end(), '\t', ' ');
  fields.resize(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) run.SetVariable(names[i], TrimText(fields[i]));
}

void RunInput(RunContext& run, const Parameters& parameters) {
  std::string_view text = parameters.Whole();
  // A blank keeps an answer from being taken for another form by how it begins.
  std::string_view form = " ";
  if (text.starts_with('=') || text.starts_with('<')) {
    form = text.substr(0, 1);
    text.remove_prefix(1);
  }
  const std::size_t comma = text.rfind(run.Separators.First);
  if (comma == std::string_view::npos) throw ScriptFault(FaultReason::MissingParameter, "2");
  const std::string prompt(TextOf(Replaced(run, text.substr(0, comma))));
  // Nobody shall be asked in vain.
  const std::string name = run.SettableName(Trim(text.substr(comma + run.Separators.First.size())));
  if (form == "=") {
    AskNumber(run, prompt, name);
  } else if (const auto answer = Ask(run, prompt, name)) {
    Assign(run, name, std::string(form) + answer->Text);
  }
}

}  // namespace vaxel
