#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/assignment.h"
#include "commands/handlers.h"
#include "interpreter/program.h"
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

class CompiledAssignment : public CompiledCommand {
 public:
  CompiledAssignment(std::string_view name, std::string_view text) : name_(name), text_(text) {}

  void Run(RunContext& run) override {
    VariableTable& variables = run.Level().Variables;
    if (!isRead_) Read(run);
    if (!isProgram_ || !variables.HoldNumbers(expression_.Variables)) {
      Assign(run, name_, text_);
      return;
    }
    const double value = program_.Compute(expression_, variables);
    if (slot_ == VariableTable::MaxVariables) {
      slot_ = variables.SlotFor(run.SettableName(name_));
    }
    variables.SetNumberAt(slot_, value);
  }

 private:
  // Only "= expression" is computed.
  void Read(const RunContext& run) {
    isRead_ = true;
    if (!text_.starts_with('=')) return;
    const ReferenceScope scope{run.Level().Variables, run.Separators};
    expression_ = program_.Add(text_.substr(1), run.Separators.First, &scope);
    isProgram_ = expression_.IsComplete;
  }

  std::string_view name_, text_;
  Program program_;
  Expression expression_;
  std::size_t slot_ = VariableTable::MaxVariables;
  bool isRead_ = false, isProgram_ = false;
};

}  // namespace

std::unique_ptr<CompiledCommand> CompileAssignment(std::string_view keyword, std::string_view text) {
  return std::make_unique<CompiledAssignment>(keyword, text);
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
