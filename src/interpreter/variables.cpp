#include "interpreter/variables.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::size_t MaxDepth = 100;
// More of them in one text are a mistake, and would take long to replace.
constexpr std::size_t MaxReferences = 1'000'000;
constexpr std::size_t ReportedLength = 60;

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

class Substitution {
 public:
  Substitution(const VariableTable& variables, const SystemVariables& system, const Separators& separators)
      : variables_(variables), system_(system), separators_(separators) {}

  void Expand(std::string_view text) {
    for (std::size_t mark; (mark = text.find('%')) != std::string_view::npos;) {
      Append(text.substr(0, mark));
      const std::string_view name = ReferenceName(text.substr(mark), separators_);
      ExpandReference(name);
      text.remove_prefix(mark + name.size());
    }
    Append(text);
  }

  std::string result;

 private:
  void Append(std::string_view text) {
    if (result.size() + text.size() > MaxTextLength) throw ScriptFault(FaultReason::TextTooLong);
    result += text;
    const std::size_t separator = text.rfind(separators_.First);
    const bool ends = separator != std::string_view::npos;
    if (ends) text.remove_prefix(separator + separators_.First.size());
    begins_ = (begins_ || ends) && text.find_first_not_of(' ') == std::string_view::npos;
  }

  void ExpandReference(std::string_view name) {
    if (++references_ > MaxReferences) throw ScriptFault(FaultReason::TextTooLong);
    if (const std::optional<std::string> value = system_.Find(name)) {
      Append(*value);
      return;
    }
    const std::string* value = variables_.Find(name);
    if (!value) throw ScriptFault(FaultReason::UnknownVariable, Shorten(name, ReportedLength));
    const bool circular = std::find(active_.begin(), active_.end(), value) != active_.end();
    if (circular || active_.size() == MaxDepth) {
      throw ScriptFault(FaultReason::CircularVariable, Shorten(name, ReportedLength));
    }
    active_.push_back(value);
    ExpandParameters(*value);
    active_.pop_back();
  }

  // A value may bring parameters, of which those that begin with a mark are left as they stand.
  void ExpandParameters(std::string_view value) {
    for (;;) {
      const std::size_t end = value.find(separators_.First);
      const std::string_view parameter = value.substr(0, end);
      if (begins_ && IsLiteral(parameter)) {
        Append(parameter);
      } else {
        Expand(parameter);
      }
      if (end == std::string_view::npos) return;
      Append(separators_.First);
      value.remove_prefix(end + separators_.First.size());
    }
  }

  const VariableTable& variables_;
  const SystemVariables& system_;
  const Separators& separators_;
  std::vector<const std::string*> active_;
  bool begins_ = true;  // nothing but blanks stands in the result after its last separator
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
  return slot;
}

const std::string* VariableTable::Find(std::string_view name) const {
  const std::size_t slot = SlotOf(name);
  return slot == MaxVariables ? nullptr : &VarValues(slot);
}

void VariableTable::Set(std::string_view name, std::string_view value) {
  const std::size_t slot = SlotFor(name);
  texts_[slot] = value;
  areNumbers_ &= ~Bit(slot);
  areUnwritten_ &= ~Bit(slot);
  areUnread_ |= Bit(slot);
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
  }
  return texts_[slot];
}

// One scan up to the first thing that may end a name: a line may hold a great many references. Which of the
// marks there does end it, where one overlaps another, is told by the few characters after it.
std::string_view ReferenceName(std::string_view text, const Separators& separators) {
  const std::array<std::string_view, 3> marks = {"°", separators.First, separators.Second};
  const auto mayEndAt = [&](std::size_t i) {
    return IsSign(text[i]) || std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) {
             return text[i] == mark.front() && text.substr(i).starts_with(mark);
           });
  };
  std::size_t end = 1;
  while (end < text.size() && !mayEndAt(end)) ++end;
  if (end == text.size()) return text;
  text = text.substr(0, end + 2 * std::max({marks[0].size(), marks[1].size(), marks[2].size()}));
  text = text.substr(
      0, static_cast<std::size_t>(std::find_if(text.begin() + 1, text.end(), IsSign) - text.begin()));
  for (std::string_view mark : marks) text = text.substr(0, text.find(mark, 1));
  return text;
}

bool IsVariableName(std::string_view text, const Separators& separators) {
  return text.size() > 1 && text.front() == '%' && ReferenceName(text, separators) == text;
}

std::string Substitute(std::string_view text, const VariableTable& variables, const SystemVariables& system,
                       const Separators& separators) {
  Substitution substitution(variables, system, separators);
  substitution.Expand(text);
  return substitution.result;
}

}  // namespace vaxel
