// The commands that give a scale values of its own, and say how values are written.
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/file_notation.h"
#include "commands/handlers.h"
#include "commands/scale_notation.h"
#include "interpreter/compiled_line.h"
#include "interpreter/program.h"
#include "interpreter/script_fault.h"
#include "interpreter/system_variables.h"
#include "scale/law_table.h"
#include "scale/value_law.h"

namespace vaxel {
namespace {

constexpr std::string_view LawVariable = "%V";

// The variables as they are, but for the one for which the law is computed: references to it stay.
class OutsideLaw : public SystemVariables {
 public:
  explicit OutsideLaw(const RunContext& run) : system_(run) {}

  std::optional<std::string> Find(std::string_view name) const override {
    if (EqualIgnoringCase(name, LawVariable)) return std::string(LawVariable);
    return system_.Find(name);
  }

 private:
  RunVariables system_;
};

// The expression of a law, computed for one value after another.
class LawExpression {
 public:
  LawExpression(const RunContext& run, std::string_view text) : run_(run) {
    value_.SetNumber(LawVariable, 0);
    const ReferenceScope scope{value_, run.Separators};
    expression_ = program_.Add(text, run.Separators.First, &scope);
    if (!expression_.IsComplete) FailExpression(text);
  }

  // What has no result is a fault that tells the value, too.
  double PlaceOf(double value) {
    try {
      value_.SetNumber(LawVariable, value);
      return program_.Compute(expression_, value_);
    } catch (const ScriptFault& fault) {
      const std::string why = fault.Description(run_.Strings, run_.LangBase);
      throw ScriptFault(FaultReason::LawFails, FloatText(static_cast<float>(value)) + " (" + why + ")");
    }
  }

 private:
  const RunContext& run_;
  VariableTable value_;
  Program program_;
  Expression expression_;
};

void RequireNoLogarithm(const RunContext& run) {
  if (run.Support.LogScale) throw ScriptFault(FaultReason::OwnValuesUnderLog);
}

void RequireRange(double first, double last, std::string_view shown) {
  if (first == last) throw ScriptFault(FaultReason::EqualEnds, Shorten(Trim(shown), 40));
  if (std::isfinite(first) && std::isfinite(last)) RequireFinite(last - first);
}

void RequireLaw(const PlaceFunction& placeOf, double first, double last) {
  const LawFault fault = FindLawFault(placeOf, first, last);
  const std::string at =
      std::isinf(fault.At) ? (fault.At < 0 ? "-∞" : "∞") : FloatText(static_cast<float>(fault.At));
  switch (fault.What) {
    case LawFault::Kind::None:
      return;
    case LawFault::Kind::Turns:
      throw ScriptFault(FaultReason::LawTurns, at);
    case LawFault::Kind::Stands:
      throw ScriptFault(FaultReason::LawStands);
    case LawFault::Kind::NoLimit:
      throw ScriptFault(FaultReason::LawWithoutLimit, at);
  }
}

double ReadLawEnd(const Parameters& parameters, std::size_t n) {
  const auto infinity = ReadInfinity(parameters.Text(n));
  return infinity ? *infinity : parameters.RequiredNumber(n);
}

// "first, last, expression in %V".
void SetLaw(RunContext& run, std::string_view text) {
  RequireNoLogarithm(run);
  LooseSign loose;
  const std::string replaced =
      Substitute(text, run.Level().Variables, OutsideLaw(run), run.Separators, loose, run.Work);
  if (!loose.Text.empty()) run.Notice(TextId::SignInValue, loose.Text, loose.Variable);
  Parameters parameters;
  parameters.Assign(replaced, run.Separators);
  const double first = ReadLawEnd(parameters, 1), last = ReadLawEnd(parameters, 2);
  RequireRange(first, last, parameters.Text(2));
  const std::string_view expression = Trim(parameters.Rest(3));
  if (expression.empty()) throw ScriptFault(FaultReason::MissingParameter, "3");
  const auto law = std::make_shared<LawExpression>(run, expression);
  const PlaceFunction placeOf = [law](double value) { return law->PlaceOf(value); };
  RequireLaw(placeOf, first, last);
  run.Support.SetOwnValues(first, last, std::make_shared<FunctionLaw>(placeOf, first, last));
}

// A line that sets a law: the references in it to the law's own variable are not replaced.
class CompiledLaw : public CompiledCommand {
 public:
  explicit CompiledLaw(std::string_view text) : text_(text) {}
  void Run(RunContext& run) override { SetLaw(run, text_); }

 private:
  std::string_view text_;
};

FaultReason ReasonOf(TableFault fault) {
  switch (fault) {
    case TableFault::MixedReadings:
      return FaultReason::TableMixesReadings;
    case TableFault::TooFew:
      return FaultReason::TableTooShort;
    case TableFault::Unordered:
      return FaultReason::TableUnordered;
    case TableFault::NotAPair:
    case TableFault::None:
      break;
  }
  return FaultReason::NotAPair;
}

// Points of an angle without its "°" are taken for per cent, and their scale leaves the support.
void NoticeReadings(const RunContext& run, const LawTable& table) {
  if (table.IsDirect) return;
  constexpr double nothing = 1e-9;
  for (const LawPoint& point : table.Points) {
    if (point.Reading < -nothing || point.Reading > 100 + nothing)
      run.Notice(TextId::ReadingBeyondSupport, NumberText(point.Reading));
  }
}

// place says where the table stands, up to the number of a line or a pair.
void SetTable(RunContext& run, LawTable table, bool isStraight, const std::string& place) {
  const LawTable::WrongMinus& dash = table.Dash;
  if (table.Fault != TableFault::None) {
    ScriptFault fault(ReasonOf(table.Fault), place + std::to_string(table.At));
    if (dash.At > 0) fault.Add(TextId::WrongMinus, Shorten(WithPlainMinus(dash.Line), ShownLength));
    throw ScriptFault(std::move(fault));
  }
  if (dash.At > 0)
    run.Notice(TextId::HeadingIsNumber, Shorten(dash.Line, ShownLength), place + std::to_string(dash.At));
  NoticeReadings(run, table);
  const double first = table.Points.front().Value, last = table.Points.back().Value;
  constexpr double wholeSupport = 100;
  for (LawPoint& point : table.Points) point.Reading /= table.IsDirect ? 1 : wholeSupport;
  run.Support.SetOwnValues(first, last,
                           std::make_shared<TableLaw>(std::move(table.Points), table.IsDirect, isStraight));
}

bool IsStraightMark(std::string_view text) {
  return EqualIgnoringCase(Trim(text), "L");
}

// "table, file [, L]".
void ReadTableFile(RunContext& run, const Parameters& parameters) {
  const std::string_view name = TextOf(parameters.Text(2));
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "2");
  const std::string_view last = parameters.Trimmed(3);
  if (!last.empty() && !IsStraightMark(last)) FailExpression(last);
  NoticeSurplus(run, parameters, 3);
  const std::string text = ReadTextFile(run, RequireFile(run, name, FileUse::Data), name);
  SetTable(run, ReadLawTable(text), !last.empty(), Shorten(name, ShownLength) + ":");
}

// "liste, value, reading, value, reading, … [, L]", which a variable brings.
void ReadTableList(RunContext& run, const Parameters& parameters) {
  const bool isStraight = IsStraightMark(parameters.Text(parameters.Count()));
  const std::size_t end = parameters.Count() + (isStraight ? 0 : 1);
  std::vector<PlacedLawPoint> points;
  for (std::size_t n = 2; n < end; n += 2) {
    const std::size_t pair = points.size() + 1;
    if (n + 1 == end) throw ScriptFault(FaultReason::NotAPair, std::to_string(pair));
    const bool isDirect = parameters.MarkOf(n + 1) == Parameters::Mark::Degrees;
    points.push_back({{parameters.RequiredNumber(n), parameters.RequiredNumber(n + 1)}, isDirect, pair});
  }
  SetTable(run, JudgePoints(points), isStraight, "");
}

void ReadRange(RunContext& run, const Parameters& parameters) {
  const double first = parameters.RequiredNumber(1), last = parameters.RequiredNumber(2);
  RequireRange(first, last, parameters.Text(2));
  NoticeSurplus(run, parameters, 2);
  run.Support.SetOwnValues(first, last, nullptr);
}

}  // namespace

std::unique_ptr<CompiledCommand> CompileEchelle(std::string_view, std::string_view text) {
  text = TrimLeft(text);
  if (!text.starts_with('<')) return nullptr;
  return std::make_unique<CompiledLaw>(text.substr(1));
}

void RunEchelle(RunContext& run, const Parameters& parameters) {
  RequireNoLogarithm(run);
  if (Trim(parameters.Whole()).empty()) {
    run.Support.SetPerCent();
  } else if (EqualIgnoringCase(parameters.Trimmed(1), "table")) {
    ReadTableFile(run, parameters);
  } else if (EqualIgnoringCase(parameters.Trimmed(1), "liste")) {
    ReadTableList(run, parameters);
  } else {
    ReadRange(run, parameters);
  }
}

void RunFormatV(RunContext& run, const Parameters& parameters) {
  const std::string_view pattern = TextOf(parameters.Whole());
  if (pattern.empty()) {
    run.PlainValues = {};
    return;
  }
  const auto format = ReadDecimalFormat(pattern);
  if (!format) throw ScriptFault(FaultReason::BadDecimalFormat, Shorten(pattern, 40));
  run.PlainValues = *format;
}

}  // namespace vaxel
