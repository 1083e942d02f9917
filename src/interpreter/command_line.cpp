#include "interpreter/command_line.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "base/text.h"
#include "interpreter/line_reader.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr int MaxCommandDepth = 100;

bool IsVariableLine(std::string_view line) {
  return line.front() == '%' && WithoutComment(line).find('=') == std::string_view::npos;
}

bool NamesList(VariableUse use, std::size_t parameter) {
  switch (use) {
    case VariableUse::ValueLists:
      return parameter % 4 == 1;
    case VariableUse::ValueTextLists:
      return parameter % 4 == 1 || parameter % 4 == 2;
    case VariableUse::OrientedValueTextLists:
      return parameter % 4 == 2 || parameter % 4 == 3;
    case VariableUse::FourthList:
      return parameter == 4;
    case VariableUse::Replaced:
    case VariableUse::Raw:
      break;
  }
  return false;
}

// Replaces the references of each parameter as written. One value may bring several parameters, which then
// count in the numbers of those behind it.
std::string ReplaceVariables(const RunContext& run, std::string_view text, const CommandRow& row) {
  const Separators& separators = run.Separators;
  std::string replaced;
  for (std::size_t number = 1;;) {
    const bool isText = row.TextFrom != 0 && number >= row.TextFrom;
    const std::size_t end = isText ? std::string_view::npos : text.find(separators.First);
    std::string_view parameter = text.substr(0, end);
    std::string_view kept;
    if (IsLiteral(parameter)) {
      std::swap(kept, parameter);
    } else if (NamesList(row.Variables, number)) {
      const std::size_t part = std::min(parameter.size(), parameter.find(separators.Second));
      kept = parameter.substr(part);
      parameter = parameter.substr(0, part);
    }
    const std::string value = run.Substitute(parameter);
    if (replaced.size() + value.size() + kept.size() > MaxTextLength) {
      throw ScriptFault(FaultReason::TextTooLong);
    }
    replaced += value;
    replaced += kept;
    if (end == std::string_view::npos) return replaced;
    replaced += separators.First;
    text.remove_prefix(end + separators.First.size());
    number += 1 + CountOf(value, separators.First);
  }
}

void CheckOrder(RunContext& run, const CommandRow& row) {
  if (run.InMainScript() && run.OrderState > row.OrderLimit) {
    run.OrderState = static_cast<std::int16_t>(-run.OrderState | row.Sets);
    throw ScriptFault(FaultKind::Order, FaultReason::None, {});
  }
  run.OrderState = static_cast<std::int16_t>(run.OrderState | row.Sets);
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

bool IsLabel(const CommandLine& command, std::string_view line) {
  return command.Keyword.ends_with(':') || IsLabelLine(line);
}

class PreparedLabel : public PreparedCommand {
 public:
  bool Run(RunContext&) override { return true; }
};

// A handler with its parameters split, and the expressions in them read.
class PreparedHandler : public PreparedCommand {
 public:
  explicit PreparedHandler(const CommandRow& row) : row_(row) {}

  bool Prepare(std::string_view text, const RunContext& run) { return parameters_.Prepare(text, run); }

  bool Run(RunContext& run) override {
    if (!parameters_.Renew()) return false;
    if (!Applies(run, row_.Where)) return true;
    CheckOrder(run, row_);
    row_.Handler(run, parameters_);
    return true;
  }

 private:
  const CommandRow& row_;
  Parameters parameters_;
};

void RunCommand(RunContext& run, const CommandRow& row, std::string_view text, Parameters& parameters) {
  if (!Applies(run, row.Where)) return;
  if (row.TextFrom == 0) text = WithoutComment(text);
  if (row.Variables != VariableUse::Raw && text.find('%') != std::string_view::npos) {
    run.ParamText = ReplaceVariables(run, text, row);
    text = run.ParamText;
  }
  CheckOrder(run, row);
  parameters.Assign(text, run.Separators);
  row.Handler(run, parameters);
}

void RunLine(RunContext& run, std::string_view line, Parameters& parameters) {
  const CommandLine command = SplitCommand(line);
  run.Keyword = UpperCase(command.Keyword);
  run.KeywordText = command.Keyword;
  if (const CommandRow* row = run.Commands.Find(run.Keyword)) {
    RunCommand(run, *row, command.Parameters, parameters);
  } else if (!IsLabel(command, line)) {
    const std::string_view suggestion = run.Commands.Suggest(run.Keyword);
    throw ScriptFault(FaultKind::UnknownCommand,
                      suggestion.empty() ? FaultReason::None : FaultReason::DidYouMean,
                      std::string(suggestion));
  }
}

// A line that is nothing but a reference to a variable is the command line that the variable holds, as it
// stands: which references in it are replaced is for the command to say. Empty when there is nothing to run.
std::string_view ResolveVariableLine(const ScriptLevel& level, std::string_view line,
                                     const Separators& separators) {
  constexpr int maxDepth = 100;
  for (int depth = 0; IsVariableLine(line); ++depth) {
    const std::string_view name = ReferenceName(line, separators);
    const std::string* value = level.Variables.Find(name);
    if (!value) throw ScriptFault(FaultReason::UnknownVariable, Shorten(name, 60));
    if (depth == maxDepth) throw ScriptFault(FaultReason::CircularVariable, Shorten(name, 60));
    line = Trim(*value);
    if (IsBlankOrComment(line)) return {};
  }
  return line;
}

}  // namespace

// Runs a logical line, or the one that a variable holds.
void RunLogicalLine(RunContext& run, std::string_view line, Parameters& parameters) {
  if (!IsVariableLine(line)) {
    RunLine(run, line, parameters);
    return;
  }
  // A copy: the command may give the variable another value.
  const std::string held(ResolveVariableLine(run.Level(), line, run.Separators));
  if (!held.empty()) RunLine(run, held, parameters);
}

void RunCommandLine(RunContext& run, std::string_view line, PreparedCommand* prepared) {
  if (IsBlankOrComment(line)) return;
  if (++run.CommandDepth > MaxCommandDepth)
    throw ScriptFault(FaultReason::CircularVariable, Shorten(line, 60));
  if (!prepared || !prepared->Run(run)) {
    Parameters parameters;
    RunLogicalLine(run, line, parameters);
  }
  --run.CommandDepth;
}

std::unique_ptr<PreparedCommand> PrepareCommandLine(const RunContext& run, std::string_view line) {
  if (IsBlankOrComment(line) || IsVariableLine(line)) return nullptr;
  const CommandLine command = SplitCommand(line);
  const CommandRow* row = run.Commands.Find(UpperCase(command.Keyword));
  if (!row) return IsLabel(command, line) ? std::make_unique<PreparedLabel>() : nullptr;
  const std::string_view text = row->TextFrom == 0 ? WithoutComment(command.Parameters) : command.Parameters;
  if (row->Prepare) return row->Prepare(run, command.Keyword, text);
  if (row->TextFrom != 0 || row->Variables != VariableUse::Replaced) return nullptr;
  auto handler = std::make_unique<PreparedHandler>(*row);
  return handler->Prepare(text, run) ? std::move(handler) : nullptr;
}

}  // namespace vaxel
