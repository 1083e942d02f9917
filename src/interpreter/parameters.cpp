#include "interpreter/parameters.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"

namespace vaxel {

namespace {

constexpr std::string_view DegreeSign = "°";

// The part of a numeric parameter that is its expression: before the second separator and without a unit
// mark.
std::string_view ExpressionPart(std::string_view parameter, const Separators& separators) {
  std::string_view number = Trim(parameter.substr(0, parameter.find(separators.Second)));
  if (!number.empty() && !IsDigit(number.back()) && number.back() != ')') number = DropLastCharacter(number);
  return number;
}

bool EndsInReference(std::string_view text, const Separators& separators) {
  const std::size_t mark = text.rfind('%');
  return mark != std::string_view::npos &&
         ReferenceName(text.substr(mark), separators).size() == text.size() - mark;
}

Parameters::Mark MarkOf(std::string_view parameter) {
  if (parameter.ends_with(DegreeSign)) return Parameters::Mark::Degrees;
  const bool isRelative = parameter.ends_with('R') || parameter.ends_with('r');
  return isRelative ? Parameters::Mark::Relative : Parameters::Mark::None;
}

// A number's text must not be cut by a separator.
bool MayStandInNumbers(std::string_view separator) {
  return separator.find_first_of("0123456789+-.Ee") != std::string_view::npos;
}

}  // namespace

void Parameters::Assign(std::string_view text, const vaxel::Separators& separators) {
  prepared_.clear();
  text_ = text;
  separators_ = &separators;
  starts_.clear();
  starts_.push_back(0);
  const std::string_view separator = separators.First;
  // A separator is one character nearly always, and a search for one character is much the faster.
  const auto next = [&](std::size_t from) {
    return separator.size() == 1 ? text.find(separator.front(), from) : text.find(separator, from);
  };
  for (std::size_t found = next(0); found != std::string_view::npos; found = next(starts_.back())) {
    starts_.push_back(found + separator.size());
  }
  starts_.push_back(text.size() + separator.size());
}

bool Parameters::Prepare(std::string_view text, const RunContext& run) {
  const vaxel::Separators& separators = run.Separators;
  Assign(text, separators);
  if (MayStandInNumbers(separators.First) || MayStandInNumbers(separators.Second)) return false;
  std::vector<PreparedNumber> prepared(Count());
  for (std::size_t n = 1; n <= Count(); ++n) {
    const std::string_view parameter = Trimmed(n);
    const bool hasReference = parameter.find('%') != std::string_view::npos;
    PreparedNumber& number = prepared[n - 1];
    // A reference at the end of the expression brings a number, which has no unit mark to be taken off.
    std::string_view part = Trim(parameter.substr(0, parameter.find(separators.Second)));
    number.IsWhole = part.size() == parameter.size();
    if (!EndsInReference(part, separators)) {
      part = ExpressionPart(parameter, separators);
      number.What = MarkOf(parameter);
    }
    if (!part.empty()) number.Value = Expression::Prepare(part, separators);
    // What is more than a number and its mark, or literal, is left to the plain way.
    const bool referenceElsewhere =
        parameter.substr(std::min(part.size(), parameter.size())).find('%') != std::string_view::npos;
    if (hasReference && (!number.Value || IsLiteral(Text(n)) || referenceElsewhere)) return false;
  }
  prepared_ = std::move(prepared);
  run_ = &run;
  return true;
}

bool Parameters::Renew() {
  isReplaced_ = false;
  for (PreparedNumber& number : prepared_) {
    if (number.Value && !number.Value->IsReady(run_->Level().Variables)) return false;
  }
  return true;
}

bool Parameters::IsReplaced(std::size_t n) const {
  return n <= prepared_.size() && prepared_[n - 1].Value && prepared_[n - 1].Value->HasReferences();
}

const Parameters& Parameters::Replaced() const {
  if (!replaced_) replaced_ = std::make_unique<Parameters>();
  if (!isReplaced_) {
    replacedText_ = run_->Substitute(text_);
    replaced_->Assign(replacedText_, *separators_);
    isReplaced_ = true;
  }
  return *replaced_;
}

std::optional<Parameters::MarkedNumber> Parameters::KnownNumber(std::size_t n) const {
  if (n > prepared_.size() || !prepared_[n - 1].Value || !prepared_[n - 1].IsWhole) return std::nullopt;
  return MarkedNumber{prepared_[n - 1].Value->Compute(run_->Level().Variables), prepared_[n - 1].What};
}

std::string_view Parameters::Text(std::size_t n) const {
  if (n > Count()) return {};
  if (IsReplaced(n)) return Replaced().Text(n);
  return text_.substr(starts_[n - 1], starts_[n] - separators_->First.size() - starts_[n - 1]);
}

std::string_view Parameters::Trimmed(std::size_t n) const {
  return Trim(Text(n));
}

std::string_view Parameters::Part(std::size_t n, std::size_t part) const {
  const std::vector<std::string_view> parts = SplitAt(Text(n), separators_->Second);
  return part < parts.size() ? parts[part] : std::string_view{};
}

std::string_view Parameters::Rest(std::size_t n) const {
  if (n > Count()) return {};
  for (std::size_t later = n; later <= prepared_.size(); ++later) {
    if (IsReplaced(later)) return Replaced().Rest(n);
  }
  return text_.substr(starts_[n - 1]);
}

std::optional<double> Parameters::Number(std::size_t n) const {
  if (n <= prepared_.size() && prepared_[n - 1].Value) {
    return prepared_[n - 1].Value->Compute(run_->Level().Variables);
  }
  return NumberOf(Text(n), *separators_);
}

double Parameters::RequiredNumber(std::size_t n) const {
  const std::optional<double> value = Number(n);
  if (value) return *value;
  if (!Trimmed(n).empty()) FailExpression(Trimmed(n));
  throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
}

std::optional<double> NumberOf(std::string_view parameter, const Separators& separators) {
  parameter = Trim(parameter);
  if (parameter.empty()) return std::nullopt;
  return StrictValue(ExpressionPart(parameter, separators), separators, parameter);
}

std::optional<double> StrictValue(std::string_view expression, const Separators& separators,
                                  std::string_view shown) {
  const Evaluation evaluation = Evaluate(expression, separators.First);
  if (!evaluation.HasValue) return std::nullopt;
  if (!evaluation.Complete) FailExpression(shown.empty() ? expression : shown);
  return evaluation.Value;
}

void FailExpression(std::string_view shown) {
  throw ScriptFault(FaultReason::Expression, Shorten(Trim(shown), 60));
}

bool IsLiteral(std::string_view parameter) {
  return TrimLeft(parameter).starts_with('=') || parameter.starts_with('<');
}

std::string_view TextOf(std::string_view parameter) {
  if (!IsLiteral(parameter)) return Trim(parameter);
  return parameter.substr(parameter.find_first_not_of(' ') + 1);
}

std::vector<std::string_view> SplitAt(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  for (std::size_t found; (found = text.find(separator)) != std::string_view::npos;) {
    parts.push_back(text.substr(0, found));
    text.remove_prefix(found + separator.size());
  }
  parts.push_back(text);
  return parts;
}

}  // namespace vaxel
