#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interpreter/expression.h"
#include "interpreter/variables.h"

namespace vaxel {

struct RunContext;

// The parameters of one line, numbered from 1. A parameter that is missing reads as an empty text.
// The texts are views of the line's text and of the run's separators.
class Parameters {
 public:
  // Splits anew; what was read before is gone.
  void Assign(std::string_view text, const Separators& separators);

  // Splits a text whose references to variables are not replaced, and prepares those parameters that hold
  // any. The text and the run must live as long. False where that would not give what replacing them gives.
  bool Prepare(std::string_view text, const RunContext& run);
  // Before each use of prepared parameters; false when a variable in them holds no number.
  bool Renew();

  // A parameter that is known to be one number: the mark behind it says whether it is relative ("R") or a
  // direction ("°").
  enum class Mark : std::uint8_t { None, Relative, Degrees };
  struct MarkedNumber {
    double Value;
    Mark What;
  };
  // None where that is not known beforehand.
  std::optional<MarkedNumber> KnownNumber(std::size_t n) const;

  // 1 for an empty text.
  std::size_t Count() const { return starts_.size() - 1; }
  // All parameters as they stand.
  std::string_view Whole() const { return prepared_.empty() ? text_ : Replaced().Whole(); }
  // The parameter as it stands, blanks included, and without them.
  std::string_view Text(std::size_t n) const;
  std::string_view Trimmed(std::size_t n) const;
  // The part of parameter n behind so many second separators, as it stands; empty where there are fewer.
  std::string_view Part(std::size_t n, std::size_t part) const;
  // Parameter n with everything behind it.
  std::string_view Rest(std::size_t n) const;

  // The parameter's value; none when it is missing or empty. Only the part before the second separator
  // counts, and one unit mark ("°", "R") at its end is passed over. A fault for what is no expression.
  std::optional<double> Number(std::size_t n) const;
  double NumberOr(std::size_t n, double otherwise) const { return Number(n).value_or(otherwise); }
  // A fault for a missing parameter.
  double RequiredNumber(std::size_t n) const;

  const vaxel::Separators& Separators() const { return *separators_; }

 private:
  struct PreparedNumber {
    std::optional<Expression> Value;  // none: the parameter is read from its text
    Mark What = Mark::None;
    bool IsWhole = true;  // nothing but the number and its mark
  };

  bool IsReplaced(std::size_t n) const;
  // The same parameters with all references replaced.
  const Parameters& Replaced() const;

  std::vector<PreparedNumber> prepared_;  // by parameter; empty where the texts are as they are
  const RunContext* run_ = nullptr;
  mutable std::unique_ptr<Parameters> replaced_;
  mutable std::string replacedText_;
  mutable bool isReplaced_ = false;

  std::string_view text_;
  const vaxel::Separators* separators_ = nullptr;
  std::vector<std::size_t> starts_;  // of each parameter, and one behind the last as if it began there
};

// The value of a numeric parameter's text, see Parameters::Number.
std::optional<double> NumberOf(std::string_view parameter, const Separators& separators);
// The value of an expression that must be one throughout; none for an empty text. A fault shows the
// expression, or the text of which it is a part.
std::optional<double> StrictValue(std::string_view expression, const Separators& separators,
                                  std::string_view shown = {});
// A fault that shows what is no expression.
[[noreturn]] void FailExpression(std::string_view shown);

// Whether a parameter is literal text, in which "%" is an ordinary character: "=", blanks before it allowed,
// or "<" stands before it as a mark.
bool IsLiteral(std::string_view parameter);
// The text that is drawn for a parameter: what stands behind a literal's mark, else without blanks around it.
std::string_view TextOf(std::string_view parameter);

// The parts of a text between the occurrences of a separator; one part for an empty text.
std::vector<std::string_view> SplitAt(std::string_view text, std::string_view separator);

}  // namespace vaxel
