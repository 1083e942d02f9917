#include "interpreter/parameters.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/expression_parser.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"

namespace vaxel {

namespace {

constexpr std::string_view DegreeSign = "°";
constexpr std::size_t ShownParameter = 60;

// Whether the text ends in the name of a number.
bool EndsInConstant(std::string_view text) {
  constexpr std::string_view name = "PI";
  if (text.size() < name.size() || !EqualIgnoringCase(text.substr(text.size() - name.size()), name))
    return false;
  const char before = text.size() == name.size() ? ' ' : text[text.size() - name.size() - 1];
  return std::string_view(" +-*/^(").find(before) != std::string_view::npos;
}

std::string_view WithoutUnitMark(std::string_view number) {
  const bool hasMark =
      !number.empty() && !IsDigit(number.back()) && number.back() != ')' && !EndsInConstant(number);
  return hasMark ? DropLastCharacter(number) : number;
}

bool EndsInReference(std::string_view text, const ReferenceScope& scope) {
  const std::size_t mark = text.rfind('%');
  return mark != std::string_view::npos &&
         ReferenceAt(text.substr(mark), scope.Variables, scope.Marks).size() == text.size() - mark;
}

Parameters::Mark MarkAtEnd(std::string_view text) {
  using Mark = Parameters::Mark;
  const bool isDirection = text.ends_with(DegreeSign);
  if (isDirection) text = DropLastCharacter(text);
  const bool isRelative = text.ends_with('R') || text.ends_with('r');
  if (isDirection) return isRelative ? Mark::Both : Mark::Degrees;
  return isRelative ? Mark::Relative : Mark::None;
}

// A number's text must not be cut by a separator.
bool MayStandInNumbers(std::string_view separator) {
  return std::any_of(separator.begin(), separator.end(), [](char c) {
    return IsDigit(c) || c == '+' || c == '-' || c == '.' || c == 'E' || c == 'e';
  });
}

// The character at this place, counted as a reader counts.
void AddPlace(ScriptFault& fault, std::string_view text, std::size_t place) {
  if (place >= text.size()) {
    fault.Add(TextId::ExpressionBreaksOff);
    return;
  }
  const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  const auto number =
      std::count_if(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(place), begins) + 1;
  fault.Add(TextId::ExpressionPlace, std::to_string(number), Shorten(text.substr(place), 12));
}

// What was written by habit at the place where the text stops being an expression.
void AddInstead(ScriptFault& fault, std::string_view text, std::size_t place) {
  const std::string_view rest = text.substr(std::min(place, text.size()));
  if (HasDecimalComma(text)) {
    std::string number(text);
    std::replace(number.begin(), number.end(), ',', '.');
    fault.Add(TextId::DecimalMark, Shorten(number, ShownParameter));
    return;
  }
  if (HasWrongMinus(text)) {
    fault.Add(TextId::WrongMinus, Shorten(WithPlainMinus(text), ShownParameter));
    return;
  }
  const auto* const end = std::find_if_not(rest.begin(), rest.end(), IsLetter);
  const std::string_view name = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  if (name.empty()) return;
  const std::string_view instead = FunctionInstead(name);
  if (!instead.empty()) {
    fault.Add(TextId::FunctionInstead, std::string(name), std::string(instead));
  } else if (IsFunctionName(name)) {
    fault.Add(TextId::FunctionHasParenthesis, std::string(name));
  }
}

}  // namespace

// Splitting stops at so many parameters; the last one then takes all that follows.
void Parameters::Split(std::string_view text, const vaxel::Separators& separators, std::size_t most) {
  text_ = text;
  separators_ = &separators;
  parameters_.clear();
  parameters_.emplace_back();
  const std::string_view separator = separators.First;
  // A separator is one character nearly always, and a search for one character is much the faster.
  const auto next = [&](std::size_t from) {
    return separator.size() == 1 ? text.find(separator.front(), from) : text.find(separator, from);
  };
  std::size_t found = 0;
  while (parameters_.size() < most && (found = next(parameters_.back().Start)) != std::string_view::npos) {
    parameters_.emplace_back().Start = found + separator.size();
  }
  parameters_.emplace_back().Start = text.size() + separator.size();
}

void Parameters::Assign(std::string_view text, const vaxel::Separators& separators) {
  references_.clear();
  dependsOnValues_ = false;
  Split(text, separators, std::string_view::npos);
}

void Parameters::Compile(std::string_view text, const CommandRow& row, const RunContext& run) {
  const vaxel::Separators& separators = run.Separators;
  Assign(text, separators);
  if (row.Rules.Variables == VariableUse::Raw || text.find('%') == std::string_view::npos) return;
  // A value then may join with the text beside it to a separator, or be cut by one.
  dependsOnValues_ = separators.First.size() > 1 || MayStandInNumbers(separators.First) ||
                     MayStandInNumbers(separators.Second);
  if (dependsOnValues_) return;
  if (row.Rules.TextFrom != 0) Split(text, separators, row.Rules.TextFrom);
  program_.Clear();
  const ReferenceScope scope{run.Level().Variables, separators};
  for (std::size_t n = 1; n <= Count(); ++n) {
    if (Text(n).find('%') != std::string_view::npos) AddReference(n, row, scope);
  }
}

void Parameters::AddReference(std::size_t n, const CommandRow& row, const ReferenceScope& scope) {
  const ParameterParts parts = PartsOf(Text(n), n, row, separators_->Second);
  if (parts.Replaced.find('%') == std::string_view::npos) return;
  Reference reference;
  reference.N = n;
  reference.Parts = parts;
  reference.MayBringSeparators = n == row.Rules.TextFrom;
  const std::string_view parameter = Trimmed(n);
  // A reference at the end of the expression brings a number, which has no unit mark to be taken off.
  std::string_view part = Trim(parameter.substr(0, parameter.find(separators_->Second)));
  const bool isWhole = part.size() == parameter.size();
  const bool endsInNumber = EndsInReference(part, scope);
  if (!isWhole || !endsInNumber) reference.What = MarkAtEnd(parameter);
  // An "R" before the sign can only be the end of a name.
  if (isWhole && reference.What == Mark::Both) reference.What = Mark::Degrees;
  if (!endsInNumber) part = WithoutUnitMark(part);
  const bool referenceElsewhere =
      parameter.substr(std::min(part.size(), parameter.size())).find('%') != std::string_view::npos;
  if (!part.empty() && !referenceElsewhere) {
    const Expression expression = program_.Add(part, separators_->First, &scope);
    if (expression.IsComplete) reference.Value = expression;
  }
  parameters_[n - 1].Reference = static_cast<std::uint32_t>(references_.size());
  references_.push_back(std::move(reference));
}

bool Parameters::BindReferences(const RunContext& run) {
  if (dependsOnValues_) return false;
  // More is for the whole line to replace, which has a limit.
  constexpr std::size_t mostText = 1'000'000;
  run_ = &run;
  joined_.clear();
  std::size_t length = text_.size();
  const VariableTable& variables = run.Level().Variables;
  for (Reference& reference : references_) {
    Parameter& parameter = parameters_[reference.N - 1];
    parameter.Read = Reading::NotDigits;
    parameter.Number.What = reference.What;
    reference.IsWritten = false;
    reference.IsNumber = reference.Value && variables.HoldNumbers(reference.Value->Variables);
    if (reference.IsNumber) {
      // A variable alone cannot fail, and nearly always its number is wanted.
      if (reference.Value->Count == 1) {
        Note(reference.N, {program_.Compute(*reference.Value, variables), reference.What});
      }
      continue;
    }
    const auto alone = reference.Value ? reference.Value->AloneVariable() : std::nullopt;
    if (alone && variables.HoldsSum(*alone)) {
      reference.IsNumber = true;
      Note(reference.N, {variables.SumAt(*alone), reference.What});
      continue;
    }
    const std::string& text = Written(reference);
    parameter.Number.What = MarkAtEnd(Trim(text));
    length += text.size();
    const bool bringsParameters =
        !reference.MayBringSeparators && text.find(separators_->First) != std::string::npos;
    if (bringsParameters || length > mostText) return false;
  }
  return true;
}

const std::string& Parameters::Written(const Reference& reference) const {
  if (!reference.IsWritten) {
    reference.Text = run_->Substitute(reference.Parts.Replaced);
    reference.Text += reference.Parts.Kept;
    reference.IsWritten = true;
  }
  return reference.Text;
}

std::string_view Parameters::Text(std::size_t n) const {
  if (n > Count()) return {};
  const std::size_t start = parameters_[n - 1].Start;
  const std::uint32_t reference = parameters_[n - 1].Reference;
  if (reference != NoReference) return Written(references_[reference]);
  return text_.substr(start, parameters_[n].Start - separators_->First.size() - start);
}

std::string_view Parameters::Trimmed(std::size_t n) const {
  return Trim(Text(n));
}

bool Parameters::IsEmpty(std::size_t n) const {
  if (n > Count()) return true;
  const std::uint32_t reference = parameters_[n - 1].Reference;
  const bool isNumber = reference != NoReference && references_[reference].IsNumber;
  return !isNumber && Trimmed(n).empty();
}

std::string_view Parameters::Part(std::size_t n, std::size_t part) const {
  const std::vector<std::string_view> parts = SplitAt(Text(n), separators_->Second);
  return part < parts.size() ? parts[part] : std::string_view{};
}

std::string_view Parameters::Rest(std::size_t n) const {
  if (n > Count()) return {};
  if (references_.empty() || references_.back().N < n) return text_.substr(parameters_[n - 1].Start);
  if (n == Count()) return Text(n);
  std::size_t start = 0;
  for (std::size_t before = 1; before < n; ++before) {
    start += Text(before).size() + separators_->First.size();
  }
  return Joined().substr(start);
}

std::string_view Parameters::Joined() const {
  if (joined_.empty()) {
    for (std::size_t n = 1; n <= Count(); ++n) {
      if (n > 1) joined_ += separators_->First;
      joined_ += Text(n);
    }
  }
  return joined_;
}

const Parameters::MarkedNumber* Parameters::Note(std::size_t n, MarkedNumber number) const {
  parameters_[n - 1].Number = number;
  parameters_[n - 1].Read = Reading::Number;
  return &parameters_[n - 1].Number;
}

// Most parameters of a straight script are such numbers, which are so read with one look at their texts.
const Parameters::MarkedNumber* Parameters::ReadDigits(std::size_t n) const {
  const std::string_view text = Trimmed(n);
  parameters_[n - 1].Read = Reading::NotDigits;
  parameters_[n - 1].Number.What = MarkAtEnd(text);
  const bool isNegative = text.starts_with('-');
  const std::string_view digits = text.substr(isNegative ? 1 : 0);
  if (digits.empty() || !IsDigit(digits.back()) || MayStandInNumbers(separators_->Second)) return nullptr;
  double value = 0;
  if (ReadUnsignedNumber(digits, value) != digits.size() || !std::isfinite(value)) return nullptr;
  return Note(n, {isNegative ? -value : value, Mark::None});
}

// A number is read once in a run of the line, whatever becomes of the variables meanwhile.
std::optional<double> Parameters::ReadNumber(std::size_t n) const {
  if (n > Count()) return std::nullopt;
  const Parameter& parameter = parameters_[n - 1];
  const bool isReference = parameter.Reference != NoReference && references_[parameter.Reference].IsNumber;
  const std::optional<double> value =
      isReference ? program_.Compute(*references_[parameter.Reference].Value, run_->Level().Variables)
                  : NumberOf(Text(n), *separators_);
  if (value) Note(n, {*value, parameter.Number.What});
  return value;
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
  const std::string_view number = Trim(parameter.substr(0, parameter.find(separators.Second)));
  return StrictValue(WithoutUnitMark(number), separators, parameter);
}

std::optional<double> StrictValue(std::string_view expression, const Separators& separators,
                                  std::string_view shown) {
  const Evaluation evaluation = Evaluate(expression, separators.First);
  if (!evaluation.HasValue) return std::nullopt;
  if (!evaluation.Complete) FailExpression(shown.empty() ? expression : shown, expression);
  return evaluation.Value;
}

void FailExpression(std::string_view shown, std::string_view expression) {
  shown = Trim(shown);
  expression = expression.empty() ? shown : Trim(expression);
  ScriptFault fault(FaultReason::Expression, Shorten(shown, ShownParameter));
  const std::size_t stop = EndOfExpression(expression, ",");
  const std::size_t before = shown.find(expression);
  // What was taken off as a unit mark may be the end of a word.
  if (before != std::string_view::npos) {
    AddPlace(fault, shown, before + stop);
    AddInstead(fault, shown, before + stop);
  }
  throw ScriptFault(std::move(fault));
}

bool IsLiteral(std::string_view parameter) {
  const std::size_t first = parameter.find_first_not_of(' ');
  return first != std::string_view::npos && (parameter[first] == '=' || parameter.front() == '<');
}

std::string_view TextOf(std::string_view parameter) {
  if (!IsLiteral(parameter)) return TrimText(parameter);
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
