// The variables of a script level and the references to them in texts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vaxel {

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
  static constexpr std::int16_t MaxVariables = 32;

  // Null for an unknown name.
  const std::string* Find(std::string_view name) const;
  // Creates the variable or replaces its value. A fault when the table is full.
  void Set(std::string_view name, std::string_view value);

  std::int16_t VarCount = 0;
  std::array<std::string, MaxVariables> VarNames;
  std::array<std::string, MaxVariables> VarValues;

 private:
  std::size_t IndexOf(std::string_view name) const;
};

// The values that the language itself gives names to. They come before a script's own variables.
class SystemVariables {
 public:
  virtual ~SystemVariables() = default;
  // None for any other name.
  virtual std::optional<std::string> Find(std::string_view name) const = 0;
};

// The name of the reference at the start of the text, which begins with "%": up to the first blank, "=",
// "°", "+", "-", "*", "/", "^", ")", "<", ">" or separator.
std::string_view ReferenceName(std::string_view text, const Separators& separators);

// Whether the text, "%" included, can be the name of a variable as a whole.
bool IsVariableName(std::string_view text, const Separators& separators);

// The text with every reference replaced by its value, in which references are replaced in turn, save in
// parameters that begin with the mark of a literal; the value of a system variable is left as it is. A fault
// for a name that is no variable, for a value that leads back to itself and for a result beyond all measure.
std::string Substitute(std::string_view text, const VariableTable& variables, const SystemVariables& system,
                       const Separators& separators);

}  // namespace vaxel
