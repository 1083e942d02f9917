#include "interpreter/compiled_line.h"

#include <cstdint>
#include <string>
#include <utility>

#include "base/text.h"
#include "interpreter/colour_value.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/line_reader.h"
#include "interpreter/replacement.h"
#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

constexpr int MaxCommandDepth = 100;
constexpr std::size_t ShownLength = 60;

bool IsVariableLine(std::string_view line) {
  return line.front() == '%' && WithoutComment(line).find('=') == std::string_view::npos;
}

// A line that is nothing but a reference to a variable is the command line that the variable holds, as it
// stands: which references in it are replaced is for the command to say. The line is empty when there is
// nothing to run.
std::string_view ResolveVariableLine(const RunContext& run, std::string_view line) {
  const ScriptLevel& level = run.Level();
  constexpr int maxDepth = 100;
  for (int depth = 0; IsVariableLine(line); ++depth) {
    const std::string_view reference = ReferenceAt(line, level.Variables, run.Separators);
    const std::string* value = level.Variables.Find(NameOf(reference));
    if (!value) FailReference(reference, level.Variables, RunVariables(run));
    if (depth == maxDepth) throw ScriptFault(FaultReason::CircularVariable, Shorten(reference, ShownLength));
    line = Trim(*value);
    if (IsBlankOrComment(line)) return {};
  }
  return line;
}

// The line is compiled anew when the variable holds another one than before.
class VariableLine : public CompiledCommand {
 public:
  explicit VariableLine(std::string_view line) : line_(line) {}

  void Run(RunContext& run) override {
    const std::string_view held = ResolveVariableLine(run, line_);
    if (held.empty()) return;
    run.Work.Add(held.size());
    if (held != held_) {
      // This is a copy: the command may give the variable another value.
      held_ = held;
      RunHeld(run, [&] { compiled_.Compile(run, held_); });
    }
    RunHeld(run, [&] { compiled_.Run(run); });
  }

 private:
  // A report that shows the variable's name alone would not say what is wrong.
  template <class Use>
  void RunHeld(const RunContext& run, Use use) const {
    const std::size_t level = run.CurrentLevel;
    try {
      use();
    } catch (ScriptFault& fault) {
      if (run.CurrentLevel == level) fault.NoteLineRun(held_);
      throw;
    }
  }

  std::string_view line_;
  std::string held_;
  CompiledLine compiled_;
};

// The report shows the line that came too early.
[[noreturn]] void FailOrder(RunContext& run, const CommandRow& row) {
  ScriptFault fault(FaultKind::Order, FaultReason::None, {});
  for (const OrderStep& step : run.OrderSteps) {
    if (step.After <= row.Rules.OrderLimit) continue;
    fault.Add(TextId::CameBefore, std::to_string(step.LineNumber), step.Line);
    break;
  }
  run.OrderState = static_cast<std::int16_t>(-run.OrderState | row.Rules.Sets);
  throw ScriptFault(std::move(fault));
}

void CheckOrder(RunContext& run, const CommandRow& row) {
  if (run.InMainScript() && run.OrderState > row.Rules.OrderLimit) {
    FailOrder(run, row);
  }
  run.AddOrder(row.Rules.Sets);
}

// A colour may take three parameters where one is counted.
void NoticeSurplus(const RunContext& run, const CommandRow& row, const Parameters& parameters) {
  std::size_t most = row.Rules.Most;
  if (parameters.Count() <= most || row.Rules.Most == CommandRules::AnyNumber) return;
  if (most > 0 && BeginsColourParts(parameters.Trimmed(most))) most += 2;
  NoticeSurplus(run, parameters, most);
}

bool Applies(const RunContext& run, Scope scope) {
  switch (scope) {
    case Scope::ScreenOnly:
      return !run.Surface.IsPrinter();
    case Scope::PrinterOnly:
      return run.Surface.IsPrinter();
    case Scope::MainScriptOnly:
      return run.InMainScript();
    case Scope::Everywhere:
      break;
  }
  return true;
}

// The row of the line's command; it is null for a label. An unknown command is a fault.
const CommandRow* RowOf(RunContext& run, std::string_view keyword, std::string_view line) {
  const CommandRow* const row = run.Commands.Find(keyword);
  if (row && !row->Rules.IsAddition) return row;
  if (const auto label = ReadLabelLine(line, run.Commands, run.Separators)) {
    if (!label->Behind.empty()) run.Notice(TextId::TextBehindLabel, Shorten(label->Behind, ShownLength));
    return nullptr;
  }
  if (!row) throw UnknownCommandFault(run, keyword, line);
  return row;
}

// "%T = L'eau" stores an "L": whoever stores a text does not expect a comment within a word.
void NoticeCutWord(RunContext& run, std::string_view text, std::string_view kept) {
  const std::string_view comment = text.substr(kept.size());
  const auto isOfAWord = [](char c) { return IsLetter(c) || static_cast<unsigned char>(c) >= 0x80; };
  const bool isWithinWord =
      !kept.empty() && comment.size() > 1 && isOfAWord(kept.back()) && isOfAWord(comment[1]);
  if (!isWithinWord) return;
  const std::size_t begin = kept.find_last_of(" =,") + 1;
  run.Notice(TextId::ApostropheCuts, Shorten(kept.substr(begin), ShownLength));
}

}  // namespace

void NoticeSurplus(const RunContext& run, const Parameters& parameters, std::size_t most) {
  for (std::size_t n = most + 1; n <= parameters.Count(); ++n) {
    if (parameters.IsEmpty(n)) continue;
    run.Notice(TextId::SurplusParameter, std::to_string(n), Shorten(parameters.Trimmed(n), ShownLength));
    return;
  }
}

void CompiledLine::Compile(RunContext& run, std::string_view line) {
  isCompiled_ = true;
  row_ = nullptr;
  command_.reset();
  if (IsVariableLine(line)) {
    command_ = std::make_unique<VariableLine>(line);
    return;
  }
  const CutCommand command = SplitCommand(line, run.Commands);
  const CommandRow* const row = RowOf(run, command.Keyword, line);
  if (!row || !Applies(run, row->Rules.Where)) return;
  text_ = row->TakesComments() ? WithoutComment(command.Parameters) : command.Parameters;
  if (row->Rules.Form == LineForm::Assignment) NoticeCutWord(run, command.Parameters, text_);
  if (row->Rules.Compile) command_ = row->Rules.Compile(command.Keyword, text_);
  if (command_) return;
  row_ = row;
  parameters_.Compile(text_, *row, run);
  mayHaveSurplus_ = parameters_.Count() > row->Rules.Most;
}

void CompiledLine::RunHandler(RunContext& run) {
  const bool mayBind = !run.IsStraight || row_->Rules.Variables == VariableUse::Raw;
  const bool isBound = mayBind && parameters_.Bind(run);
  // What the variables bring is split with the rest.
  const std::string text = isBound ? std::string() : ReplaceVariables(run, text_, *row_);
  run.Work.Add(text.size());
  CheckOrder(run, *row_);
  if (isBound) {
    if (mayHaveSurplus_) NoticeSurplus(run, *row_, parameters_);
    row_->Handler(run, parameters_);
  } else {
    Parameters parameters;
    parameters.Assign(text, run.Separators);
    NoticeSurplus(run, *row_, parameters);
    row_->Handler(run, parameters);
  }
}

FollowingCommand::FollowingCommand(std::string_view line) : line_(line) {}

void FollowingCommand::Run(RunContext& run) {
  if (IsBlankOrComment(line_)) return;
  if (++run.CommandDepth > MaxCommandDepth) {
    throw ScriptFault(FaultReason::NestedCommands, "THEN " + Shorten(line_, ShownLength));
  }
  if (!isCompiled_) compiled_.Compile(run, line_);
  isCompiled_ = true;
  compiled_.Run(run);
  --run.CommandDepth;
}

}  // namespace vaxel
