#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/assignment.h"
#include "commands/handlers.h"
#include "interpreter/expression.h"
#include "interpreter/script_fault.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

// "%Name<TAB>= value" of system variables, as they stand in a line of the box.
std::string SystemItems(const RunContext& run, std::initializer_list<std::string_view> names) {
  const RunVariables system(run);
  std::string line;
  for (std::string_view name : names) {
    if (!line.empty()) line += '\t';
    line += name;
    line += "\t= ";
    line += system.Find(name).value_or("");
  }
  return line;
}

std::string VariableList(const RunContext& run) {
  const bool dataEnded = run.Level().Data.AtEnd();
  std::string list = SystemItems(run, {"%iRec", "%Date"}) + '\n' + SystemItems(run, {"%File", "%Path"}) +
                     '\n' + SystemItems(run, {"%Fil1"}) + (dataEnded ? "\t%EOF\t= 1\n" : "\t%EOF = 0\n") +
                     SystemItems(run, {"%TaP", "%EpT"}) + '\n' + SystemItems(run, {"%CEx", "%CEy"}) + '\n' +
                     SystemItems(run, {"%CTx", "%CTy", "%Zoom", "%Imp"}) + '\n';
  const VariableTable& variables = run.Level().Variables;
  for (std::size_t i = 0; i < static_cast<std::size_t>(variables.VarCount); ++i) {
    list += variables.VarNames[i] + "= " + variables.VarValues(i) + '\n';
  }
  return list;
}

class PreparedAssignment : public PreparedCommand {
 public:
  PreparedAssignment(std::string_view name, Expression expression)
      : name_(name), expression_(std::move(expression)) {}

  bool Run(RunContext& run) override {
    VariableTable& variables = run.Level().Variables;
    if (!expression_.IsReady(variables)) return false;
    const double value = expression_.Compute(variables);
    if (slot_ == VariableTable::MaxVariables) slot_ = variables.SlotFor(name_);
    variables.SetNumberAt(slot_, value);
    return true;
  }

 private:
  std::string name_;
  Expression expression_;
  std::size_t slot_ = VariableTable::MaxVariables;
};

}  // namespace

void RunAssignment(RunContext& run, const Parameters& parameters) {
  Assign(run, run.KeywordText, parameters.Whole());
}

// "%Name == expression" with an expression that is read once.
std::unique_ptr<PreparedCommand> PrepareAssignment(const RunContext& run, std::string_view keyword,
                                                   std::string_view text) {
  if (!text.starts_with('=') || !IsVariableName(keyword, run.Separators) || IsSystemVariable(keyword))
    return nullptr;
  auto expression = Expression::Prepare(text.substr(1), run.Separators);
  if (!expression) return nullptr;
  return std::make_unique<PreparedAssignment>(keyword, std::move(*expression));
}

void RunCurrentPoint(RunContext& run, const Parameters& parameters) {
  const Point point = run.Surface.CurrentScriptPoint();
  const std::string x = CoordinateText(point.X);
  const std::string y = CoordinateText(point.Y);
  if (Trim(parameters.Whole()).empty()) {
    run.WriteComment("  ' " + x + ", " + y);
    return;
  }
  for (std::size_t n : {1U, 2U}) {
    if (parameters.Trimmed(n).empty()) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
  }
  run.SetVariable(parameters.Trimmed(1), x);
  run.SetVariable(parameters.Trimmed(2), y);
}

void RunListeVar(RunContext& run, const Parameters& parameters) {
  const ScriptLevel& level = run.Level();
  std::string title = "Vaxel        ListeVar (n=" + std::to_string(level.Variables.VarCount) + ")    ";
  title += TextOf(parameters.Whole());
  const bool goesOn =
      run.Host.Confirm(BoxKind::Variables, level.FileName, level.Line.Number, title, VariableList(run));
  if (!goesOn) run.EndLevel();
}

}  // namespace vaxel
