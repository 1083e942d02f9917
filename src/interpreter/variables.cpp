#include "interpreter/variables.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"
#include "interpreter/work_meter.h"

namespace vaxel {
namespace {

constexpr std::size_t MaxDepth = 100;
// More of them in one text are a mistake, and would take long to replace.
constexpr std::size_t MaxReferences = 1'000'000;
constexpr std::size_t ReportedLength = 60;
constexpr std::size_t LongestSystemName = 5;

// Whether the character ends a name.
bool IsSign(char c) {
  switch (c) {
    case ' ':
    case '=':
    case '+':
    case '-':
    case '*':
    case '/':
    case '^':
    case ')':
    case '<':
    case '>':
      return true;
    default:
      return false;
  }
}

// The name at the start of the text: one scan up to the first thing that may end a name, as a line may hold a
// great many references. Which of the marks there does end it, where one overlaps another, is told by the few
// characters after it.
std::string_view NameAt(std::string_view text, const Separators& separators, bool endsAtSigns) {
  const std::array<std::string_view, 6> all = {"°", "\u00A0", "\u202F", separators.First, separators.Second,
                                               "%%"};
  const std::span marks(all.data(), all.size() - (endsAtSigns ? 0 : 1));
  std::size_t longest = 0;
  for (const std::string_view mark : marks) longest = std::max(longest, mark.size());
  const auto mayEndAt = [&](std::size_t i) {
    return IsSign(text[i]) || std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) {
             return text[i] == mark.front() && text.substr(i).starts_with(mark);
           });
  };
  std::size_t end = 1;
  while (end < text.size() && !mayEndAt(end)) ++end;
  if (end == text.size()) return text;
  text = text.substr(0, end + 2 * longest);
  text = text.substr(
      0, static_cast<std::size_t>(std::find_if(text.begin() + 1, text.end(), IsSign) - text.begin()));
  for (const std::string_view mark : marks) text = text.substr(0, text.find(mark, 1));
  return text;
}

// The length of "%{Name}" at the start of a name, else 0.
std::size_t BracedLength(std::string_view name) {
  const std::size_t close = name.find('}');
  const bool isBraced = name.starts_with("%{") && close != std::string_view::npos && close > 2;
  return isBraced && name.find('%', 1) > close ? close + 1 : 0;
}

// The same at the start of a text, which is not looked through behind the brace: it may hold a great many
// references. Marks that overlap the brace end the name before it.
std::size_t BracedLengthAt(std::string_view text, const Separators& separators) {
  const std::size_t close = text.starts_with("%{") ? text.find('}') : std::string_view::npos;
  if (close == std::string_view::npos) return 0;
  constexpr std::size_t longestBlank = 3;
  const std::size_t longest = std::max({separators.First.size(), separators.Second.size(), longestBlank});
  return BracedLength(NameAt(text.substr(0, close + longest), separators, true));
}

bool IsWordCharacter(char c) {
  return IsDigit(c) || IsLetter(c) || c == '{' || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

// Adds the numbers of "1 + 2 - 3", or of "+ 2 - 3" to what stands before, to the sum. The result is false
// when there is anything else.
bool AddTerms(std::string_view text, bool hasBegun, double& sum) {
  const auto skip = [&](std::string_view signs) {
    bool isNegative = false;
    for (;;) {
      const std::size_t blank = BlankLength(text);
      const bool isSign = blank == 0 && !text.empty() && signs.find(text.front()) != std::string_view::npos;
      if (blank == 0 && !isSign) return isNegative;
      if (isSign && text.front() == '-') isNegative = !isNegative;
      text.remove_prefix(isSign ? 1 : blank);
    }
  };
  for (skip({}); !text.empty() || !hasBegun; skip({})) {
    const bool isAfterSign = !hasBegun || text.front() == '+' || text.front() == '-';
    const bool isNegative = skip("+-");
    double number = 0;
    const std::size_t length = ReadUnsignedNumber(text, number);
    if (!isAfterSign || length == 0) return false;
    text.remove_prefix(length);
    sum = (hasBegun ? sum : 0) + (isNegative ? -number : number);
    hasBegun = true;
  }
  return std::isfinite(sum);
}

class Substitution {
 public:
  Substitution(const VariableTable& variables, const SystemVariables& system, const Separators& separators,
               LooseSign& loose, WorkMeter& work)
      : variables_(variables), system_(system), separators_(separators), loose_(loose), work_(work) {}

  void Expand(std::string_view text) {
    for (std::size_t mark; (mark = text.find('%')) != std::string_view::npos;) {
      Append(text.substr(0, mark));
      text.remove_prefix(mark);
      const std::string_view reference = ReferenceAt(text, variables_, separators_);
      if (!Replace(reference)) FailReference(reference, variables_, system_);
      text.remove_prefix(reference.size());
    }
    Append(text);
  }

  std::string result;

 private:
  void Append(std::string_view text) {
    if (result.size() + text.size() > MaxTextLength) throw ScriptFault(FaultReason::TextTooLong);
    work_.Add(text.size());
    result += text;
    // A separator has no blanks around it.
    const std::size_t last = text.find_last_not_of(' ');
    if (last != std::string_view::npos) begins_ = text.substr(0, last + 1).ends_with(separators_.First);
  }

  // The result is false for a name that is unknown.
  bool Replace(std::string_view reference) {
    if (++references_ > MaxReferences) throw ScriptFault(FaultReason::TextTooLong);
    work_.Add(WorkMeter::Reference);
    const std::string name = NameOf(reference);
    const std::optional<std::string> text = name == "%%" ? std::string("%") : system_.Find(name);
    if (text) {
      Append(*text);
      return true;
    }
    const std::size_t slot = variables_.SlotOf(name);
    if (slot == VariableTable::MaxVariables) return false;
    const bool circular = std::find(active_.begin(), active_.end(), slot) != active_.end();
    if (circular || active_.size() == MaxDepth) {
      throw ScriptFault(FaultReason::CircularVariable, Shorten(name, ReportedLength));
    }
    active_.push_back(slot);
    ExpandParameters(variables_.VarValues(slot));
    active_.pop_back();
    return true;
  }

  // A value may bring parameters, of which those that begin with a mark are left as they stand.
  void ExpandParameters(std::string_view value) {
    for (;;) {
      const std::size_t end = value.find(separators_.First);
      const std::string_view parameter = value.substr(0, end);
      if (begins_ && IsLiteral(parameter)) {
        Append(parameter);
      } else {
        ExpandValue(parameter);
      }
      if (end == std::string_view::npos) return;
      Append(separators_.First);
      value.remove_prefix(end + separators_.First.size());
    }
  }

  void ExpandValue(std::string_view value) {
    // No name is longer, so that what follows a sign need not be scanned to its end again and again.
    const std::size_t longest = std::max(variables_.LongestName(), LongestSystemName) + 10;
    for (std::size_t mark; (mark = value.find('%')) != std::string_view::npos;) {
      Append(value.substr(0, mark));
      value.remove_prefix(mark);
      const std::string_view reference = ReferenceAt(value.substr(0, longest), variables_, separators_);
      if (Replace(reference)) {
        value.remove_prefix(reference.size());
        continue;
      }
      Append(value.substr(0, 1));
      value.remove_prefix(1);
      if (reference.size() == 1 || !IsWordCharacter(reference[1]) || !loose_.Text.empty()) continue;
      loose_ = {Shorten(reference, ReportedLength), variables_.VarNames[active_.back()]};
    }
    Append(value);
  }

  const VariableTable& variables_;
  const SystemVariables& system_;
  const Separators& separators_;
  LooseSign& loose_;
  WorkMeter& work_;
  std::vector<std::size_t> active_;  // the slots whose values are being replaced
  bool begins_ = true;               // nothing but blanks stands in the result after its last separator
  std::size_t references_ = 0;
};

}  // namespace

std::size_t VariableTable::SlotOf(std::string_view name) const {
  const auto used = VarNames.begin() + VarCount;
  const auto found = std::find_if(VarNames.begin(), used,
                                  [&](const std::string& known) { return EqualIgnoringCase(known, name); });
  return found == used ? MaxVariables : static_cast<std::size_t>(found - VarNames.begin());
}

std::size_t VariableTable::SlotFor(std::string_view name) {
  const std::size_t known = SlotOf(name);
  if (known != MaxVariables) return known;
  if (VarCount == MaxVariables)
    throw ScriptFault(FaultReason::TooManyVariables, std::to_string(MaxVariables));
  const auto slot = static_cast<std::size_t>(VarCount++);
  VarNames[slot] = name;
  longestName_ = std::max(longestName_, name.size());
  hasSignsInNames_ = hasSignsInNames_ || name.find("%%") != std::string_view::npos;
  return slot;
}

const std::string* VariableTable::Find(std::string_view name) const {
  const std::size_t slot = SlotOf(name);
  return slot == MaxVariables ? nullptr : &VarValues(slot);
}

void VariableTable::Set(std::string_view name, std::string_view value) {
  const std::size_t slot = SlotFor(name);
  std::string& text = texts_[slot];
  const bool isLonger = (areSums_ & ~areUnwritten_ & Bit(slot)) != 0 && value.starts_with(text);
  sums_[slot].Length = isLonger ? text.size() : 0;
  // A text that was long once shall not keep its memory.
  constexpr std::size_t muchMemory = 1'000'000;
  if (text.capacity() > muchMemory && value.size() < text.capacity() / 2) {
    text = std::string(value);
  } else {
    text = value;
  }
  areSums_ &= ~Bit(slot);
  areNoSums_ &= ~Bit(slot);
  areNumbers_ &= ~Bit(slot);
  areUnwritten_ &= ~Bit(slot);
  areUnread_ |= Bit(slot);
}

bool VariableTable::ReadSum(std::size_t slot) const {
  const std::string_view text = texts_[slot];
  Sum& sum = sums_[slot];
  // A digit or a point would go on with the last number.
  const std::string_view added = text.substr(std::min(text.size(), sum.Length));
  const bool goesOn = BlankLength(added) > 0 || added.starts_with('+') || added.starts_with('-');
  if (!goesOn) sum = {};
  const bool isSum = AddTerms(text.substr(sum.Length), sum.Length > 0, sum.Value);
  sum.Length = isSum ? text.size() : 0;
  (isSum ? areSums_ : areNoSums_) |= Bit(slot);
  return isSum;
}

std::size_t VariableTable::TextLength() const {
  std::size_t length = 0;
  for (std::size_t slot = 0; slot < MaxVariables; ++slot) {
    if ((areUnwritten_ & Bit(slot)) != 0) std::string().swap(texts_[slot]);
    length += texts_[slot].size();
  }
  return length;
}

bool VariableTable::ReadNumbers(Slots slots) const {
  for (Slots unread = slots & areUnread_ & ~areNumbers_; unread != 0; unread &= unread - 1) {
    ReadNumber(static_cast<std::size_t>(std::countr_zero(unread)));
  }
  return (slots & ~areNumbers_) == 0;
}

void VariableTable::ReadNumber(std::size_t slot) const {
  const std::string_view text = texts_[slot];
  const bool isSigned = text.starts_with('-') || text.starts_with('+');
  const std::string_view digits = text.substr(isSigned ? 1 : 0);
  double value = 0;
  const bool isNumber = !digits.empty() && IsDigit(digits.back()) &&
                        ReadUnsignedNumber(digits, value) == digits.size() && std::isfinite(value);
  numbers_[slot] = text.starts_with('-') ? -value : value;
  areUnread_ &= ~Bit(slot);
  if (isNumber) areNumbers_ |= Bit(slot);
}

const std::string& VariableTable::VarValues(std::size_t slot) const {
  if ((areUnwritten_ & Bit(slot)) != 0) {
    texts_[slot] = NumberText(numbers_[slot]);
    areUnwritten_ &= ~Bit(slot);
    areSums_ &= ~Bit(slot);
  }
  return texts_[slot];
}

std::string_view ReferenceAt(std::string_view text, const VariableTable& variables,
                             const Separators& separators) {
  constexpr std::string_view sign = "%%";
  if (text.starts_with(sign)) return text.substr(0, sign.size());
  if (const std::size_t length = BracedLengthAt(text, separators)) return text.substr(0, length);
  const std::string_view name = NameAt(text, separators, true);
  if (!variables.HasSignsInNames() || !text.substr(name.size()).starts_with(sign)) return name;
  const std::size_t enough = variables.LongestName() + 10;
  const std::string_view longer = NameAt(text.substr(0, enough), separators, false);
  return variables.SlotOf(longer) != VariableTable::MaxVariables ? longer : name;
}

std::string NameOf(std::string_view reference) {
  const std::size_t length = BracedLength(reference);
  if (length == 0 || length != reference.size()) return std::string(reference);
  return "%" + std::string(reference.substr(2, length - 3));
}

bool IsVariableName(std::string_view text, const Separators& separators) {
  return text.size() > 1 && text.front() == '%' && text[1] != '%' &&
         NameAt(text, separators, false) == text && BracedLength(text) == 0;
}

std::string Substitute(std::string_view text, const VariableTable& variables, const SystemVariables& system,
                       const Separators& separators, LooseSign& loose, WorkMeter& work) {
  Substitution substitution(variables, system, separators, loose, work);
  substitution.Expand(text);
  return std::move(substitution.result);
}

void FailReference(std::string_view reference, const VariableTable& variables,
                   const SystemVariables& system) {
  const std::string shown = Shorten(reference, ReportedLength);
  const std::string_view digits = reference.substr(1);
  if (digits.empty() || !IsWordCharacter(digits.front())) {
    throw ScriptFault(FaultReason::LonePercentSign, shown);
  }
  if (std::all_of(digits.begin(), digits.end(), IsDigit)) {
    throw ScriptFault(FaultReason::NotPassed, shown, Shorten(digits, ReportedLength));
  }
  const std::size_t longest = std::max(variables.LongestName(), LongestSystemName);
  for (std::size_t length = std::min(reference.size() - 1, longest); length > 1; --length) {
    const std::string name(reference.substr(0, length));
    if (variables.Find(name) || system.Find(name)) {
      throw ScriptFault(FaultReason::NameGoesOn, shown, name, "%{" + name.substr(1) + "}");
    }
  }
  throw ScriptFault(FaultReason::UnknownVariable, shown);
}

}  // namespace vaxel
