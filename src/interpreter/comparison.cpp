#include "interpreter/comparison.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/line_reader.h"
#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::size_t ShownSide = 60;

struct RelationRow {
  std::string_view Sign;
  Relation How;
};

constexpr std::array<RelationRow, 9> Relations = {{{"<", Relation::Less},
                                                   {"<=", Relation::LessOrEqual},
                                                   {"=<", Relation::LessOrEqual},
                                                   {"=", Relation::Equal},
                                                   {">=", Relation::GreaterOrEqual},
                                                   {"=>", Relation::GreaterOrEqual},
                                                   {">", Relation::Greater},
                                                   {"<>", Relation::Different},
                                                   {"><", Relation::Different}}};

// A side of a comparison that is no number: it compares as what it begins with.
void NoticeSide(RunContext& run, std::string_view side, double value) {
  const TextId text = HasDecimalComma(side) ? TextId::SideHasComma
                      : HasWrongMinus(side) ? TextId::SideHasWrongMinus
                                            : TextId::SideIsNoExpression;
  run.Notice(text, Shorten(side, ShownSide), NumberText(value));
}

double SideValue(RunContext& run, std::string_view side, std::string_view condition) {
  const Evaluation evaluation = Evaluate(side, run.Separators.First);
  if (!evaluation.HasValue) throw ScriptFault(FaultReason::BadComparison, Shorten(condition, ShownSide));
  if (!evaluation.Complete) NoticeSide(run, side, evaluation.Value);
  return evaluation.Value;
}

bool IsWordPart(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'Z') || c == '_' || c == '%' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool EndsInBlank(std::string_view text) {
  return Trim(text).size() != TrimLeft(text).size();
}

// The place where the word stands apart from others; npos when there is none.
std::size_t FindWord(std::string_view upper, std::string_view word) {
  for (std::size_t at = upper.find(word); at != std::string_view::npos; at = upper.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    const bool begins = at == 0 || !IsWordPart(upper[at - 1]) || EndsInBlank(upper.substr(0, at));
    const bool ends = end == upper.size() || !IsWordPart(upper[end]) || BlankLength(upper.substr(end)) > 0;
    if (begins && ends) return at;
  }
  return std::string_view::npos;
}

struct Comparison {
  std::string_view Left, Right;  // trimmed
  Relation How = Relation::Equal;
};

// Splits a condition at its last operator. The result is none where the condition has no operator, or one of
// two equal signs.
std::optional<Comparison> SplitComparison(std::string_view condition) {
  constexpr std::string_view signs = "<>=";
  const std::size_t last = condition.find_last_of(signs);
  if (last == std::string_view::npos) return std::nullopt;
  const bool isPair = last > 0 && signs.find(condition[last - 1]) != std::string_view::npos;
  const std::size_t first = isPair ? last - 1 : last;
  const std::string_view sign = condition.substr(first, last + 1 - first);
  for (const RelationRow& row : Relations) {
    if (row.Sign == sign)
      return Comparison{TrimText(condition.substr(0, first)), TrimText(condition.substr(last + 1)), row.How};
  }
  return std::nullopt;
}

}  // namespace

void CompiledComparison::Compile(std::string_view condition, RunContext& run) {
  const auto comparison = SplitComparison(condition);
  if (!comparison || Trim(comparison->Left).empty() || Trim(comparison->Right).empty()) return;
  const ReferenceScope scope{run.Level().Variables, run.Separators};
  const auto add = [&](std::string_view side, Expression& expression) {
    expression = program_.Add(side, run.Separators.First, &scope);
    if (expression.IsComplete) return true;
    // A text that only begins like an expression is worth that beginning.
    const bool isConstant = side.find('%') == std::string_view::npos;
    if (isConstant) NoticeSide(run, side, program_.Compute(expression));
    return isConstant;
  };
  how_ = comparison->How;
  isCompiled_ = add(comparison->Left, left_) && add(comparison->Right, right_);
}

std::optional<bool> CompiledComparison::ResultOfSums(const VariableTable& variables) const {
  const auto valueOf = [&](const Expression& side) -> std::optional<double> {
    if (variables.HoldNumbers(side.Variables)) return program_.Compute(side, variables);
    const auto slot = side.AloneVariable();
    return slot && variables.HoldsSum(*slot) ? std::optional(variables.SumAt(*slot)) : std::nullopt;
  };
  const auto left = valueOf(left_);
  const auto right = left ? valueOf(right_) : std::nullopt;
  return right ? std::optional(Holds(how_, *left, *right)) : std::nullopt;
}

bool IsTrue(RunContext& run, std::string_view condition, bool asText) {
  if (Trim(condition).empty()) return false;
  condition = TrimText(condition);
  const auto comparison = SplitComparison(condition);
  if (!comparison) throw ScriptFault(FaultReason::BadComparison, Shorten(condition, ShownSide));
  if (asText) return Holds(comparison->How, comparison->Left, comparison->Right);
  const double left = SideValue(run, comparison->Left, condition);
  return Holds(comparison->How, left, SideValue(run, comparison->Right, condition));
}

Conditional SplitConditional(std::string_view text) {
  constexpr std::string_view jump = "GOTO", command = "THEN", frenchCommand = "ALORS";
  const std::string upper = UpperCase(WithoutComment(text));
  const auto split = [&](std::size_t at, bool jumps, std::string_view word = "GOTO") {
    const std::string_view rest = text.substr(at + word.size());
    return Conditional{Trim(text.substr(0, at)), jumps, Trim(jumps ? WithoutComment(rest) : rest)};
  };
  const std::size_t jumpWord = FindWord(upper, jump), commandWord = FindWord(upper, command);
  // The command may be a jump itself. A comparison without its right side has "then" as a text to compare
  // with.
  const auto hasRightSide = [&] {
    const std::string_view condition = Trim(text.substr(0, commandWord));
    return condition.empty() || std::string_view("<>=").find(condition.back()) == std::string_view::npos;
  };
  if (commandWord < jumpWord && (jumpWord == std::string_view::npos || hasRightSide())) {
    return split(commandWord, false);
  }
  if (jumpWord != std::string_view::npos) return split(jumpWord, true);
  const std::size_t jumpAt = upper.find(jump), commandAt = upper.find(command);
  if (jumpAt != std::string_view::npos) return split(jumpAt, true);
  if (commandAt != std::string_view::npos) return split(commandAt, false);
  const std::size_t apart = FindWord(upper, frenchCommand);
  const std::size_t french = apart != std::string_view::npos ? apart : upper.find(frenchCommand);
  if (french != std::string_view::npos) return split(french, false, frenchCommand);
  throw ScriptFault(FaultReason::MissingThen);
}

}  // namespace vaxel
