#include "interpreter/parameters.h"

#include <string>

#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"
#include "text/text.h"

namespace vaxel {

void Parameters::Assign(std::string_view text, const vaxel::Separators& separators) {
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

std::string_view Parameters::Text(std::size_t n) const {
  if (n > Count()) return {};
  return text_.substr(starts_[n - 1], starts_[n] - separators_->First.size() - starts_[n - 1]);
}

std::string_view Parameters::Trimmed(std::size_t n) const {
  return Trim(Text(n));
}

std::string_view Parameters::Rest(std::size_t n) const {
  return n > Count() ? std::string_view{} : text_.substr(starts_[n - 1]);
}

std::optional<double> Parameters::Number(std::size_t n) const {
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
  std::string_view number = Trim(parameter.substr(0, parameter.find(separators.Second)));
  if (!number.empty() && !IsDigit(number.back()) && number.back() != ')') number = DropLastCharacter(number);
  return StrictValue(number, separators, parameter);
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
