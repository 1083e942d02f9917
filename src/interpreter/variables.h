// The variables of a script level and the references to them in texts.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/number_text.h"

namespace vaxel {

class WorkMeter;

// The longest text that the replacement of variables may make.
inline constexpr std::size_t MaxTextLength = 16'000'000;

struct Separators {
  std::string First = ",";   // between parameters
  std::string Second = "§";  // between the parts of one parameter
};

// At most 32 variables, whose values are texts. Names begin with "%" and are kept as first written; they are
// compared without regard to case.
class VariableTable {
 public:
  static constexpr std::size_t MaxVariables = 32;

  // The text is null for an unknown name.
  const std::string* Find(std::string_view name) const;
  // Creates the variable or replaces its value. A full table is a fault.
  void Set(std::string_view name, std::string_view value);
  // The same for the text of a number, which is written when someone reads it.
  void SetNumber(std::string_view name, double value) { SetNumberAt(SlotFor(name), value); }

  // A variable keeps its slot as long as the table lives. An unknown name has the slot MaxVariables.
  std::size_t SlotOf(std::string_view name) const;
  // Creates the variable when there is none.
  std::size_t SlotFor(std::string_view name);
  // The number is the one that its text reads back as, though the text may never be written: at most 15
  // digits.
  void SetNumberAt(std::size_t slot, double value) {
    constexpr double largestWhole = 1e15;
    const bool isExact =
        std::abs(value) < largestWhole && value == static_cast<double>(static_cast<std::int64_t>(value));
    // Adding 0 takes the sign from a zero, which no text has.
    numbers_[slot] = isExact ? value + 0.0 : AsWritten(value);
    areNumbers_ |= Bit(slot);
    areUnwritten_ |= Bit(slot);
  }

  // A bit for each of several slots.
  using Slots = std::uint32_t;
  static constexpr Slots Bit(std::size_t slot) { return Slots{1} << slot; }
  // Whether the value of each of them is the text of one number, sign included.
  bool HoldNumbers(Slots slots) const { return (slots & ~areNumbers_) == 0 || ReadNumbers(slots); }
  // The value of a slot that holds a number.
  double NumberAt(std::size_t slot) const { return numbers_[slot]; }
  // Whether the value of a slot that holds no number is a sum of plain numbers, and what that comes to. A sum
  // that grows at its end, as that of "%I = %I + 1", is not read anew from its beginning.
  bool HoldsSum(std::size_t slot) const {
    return (areSums_ & Bit(slot)) != 0 || ((areNoSums_ & Bit(slot)) == 0 && ReadSum(slot));
  }
  double SumAt(std::size_t slot) const { return sums_[slot].Value; }

  // How many bytes all texts take.
  std::size_t TextLength() const;

  // Whether a name has "%%" in it, and how long the longest one is.
  bool HasSignsInNames() const { return hasSignsInNames_; }
  std::size_t LongestName() const { return longestName_; }

  std::int16_t VarCount = 0;
  std::array<std::string, MaxVariables> VarNames;
  const std::string& VarValues(std::size_t slot) const;

 private:
  // A sum as far as it is read.
  struct Sum {
    double Value = 0;
    std::size_t Length = 0;  // of its text
  };

  bool ReadSum(std::size_t slot) const;
  bool ReadNumbers(Slots slots) const;
  void ReadNumber(std::size_t slot) const;

  bool hasSignsInNames_ = false;
  std::size_t longestName_ = 0;
  mutable std::array<std::string, MaxVariables> texts_;
  mutable std::array<double, MaxVariables> numbers_{};
  mutable Slots areNumbers_ = 0;
  mutable Slots areUnread_ = 0;     // texts that nobody has wanted as numbers yet
  mutable Slots areUnwritten_ = 0;  // numbers whose texts nobody has wanted yet
  mutable std::array<Sum, MaxVariables> sums_{};
  mutable Slots areSums_ = 0, areNoSums_ = 0;  // texts that were read as sums, and those that are none
};
static_assert(VariableTable::MaxVariables <= 32);

// The values that the language itself gives names to. They come before a script's own variables.
class SystemVariables {
 public:
  virtual ~SystemVariables() = default;
  // Any other name has none.
  virtual std::optional<std::string> Find(std::string_view name) const = 0;
};

// The reference at the start of the text, which begins with "%":
//   %%      a percent sign
//   %{Name} a name between braces
//   %Name   a name up to the first blank, "=", "°", "+", "-", "*", "/", "^", ")", "<", ">" or separator, or
//   to
//           "%%" unless a variable has the longer name
std::string_view ReferenceAt(std::string_view text, const VariableTable& variables,
                             const Separators& separators);
// The name that a reference is written for: without its braces.
std::string NameOf(std::string_view reference);

// Whether the text, "%" included, can be the name of a variable as a whole.
bool IsVariableName(std::string_view text, const Separators& separators);

// A "%" in the value of a variable that letters or digits follow, but no variable's name.
struct LooseSign {
  std::string Text;      // the sign and what might be a name; empty: there was none
  std::string Variable;  // the name of the variable
};

// The text with every reference replaced by its value, in which references are replaced in turn, save in
// parameters that begin with the mark of a literal; the value of a system variable is left as it is. A name
// that is no variable is a fault in the text; in a value, which may come from a file of data, its "%" is an
// ordinary character, and the first such sign is reported. A value that leads back to itself and a result of
// more than MaxTextLength are faults.
std::string Substitute(std::string_view text, const VariableTable& variables, const SystemVariables& system,
                       const Separators& separators, LooseSign& loose, WorkMeter& work);

// The fault of a name that is no variable, with what may be meant instead.
[[noreturn]] void FailReference(std::string_view reference, const VariableTable& variables,
                                const SystemVariables& system);

}  // namespace vaxel
