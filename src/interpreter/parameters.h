// The parameters of a command line, as its handler reads them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interpreter/program.h"
#include "interpreter/replacement.h"
#include "interpreter/variables.h"

namespace vaxel {

// The parameters of one line, numbered from 1: split texts, and the values of those that were read as
// numbers. A parameter that is missing reads as an empty text. The texts are views of the line's text and of
// the run's separators; those of parameters with references hold until the line is run again.
class Parameters {
 public:
  // Splits a text that holds no references to replace; what was read before is gone.
  void Assign(std::string_view text, const Separators& separators);

  // The same for a text in which references are to be replaced as the row says. Expressions with references
  // become programs. The text must live as long.
  void Compile(std::string_view text, const CommandRow& row, const RunContext& run);
  // Before each use of compiled parameters: takes what the variables hold. The result is false where that may
  // bring further parameters: the text must then be split as it is with its references replaced. The run must
  // live as long.
  bool Bind(const RunContext& run) {
    return references_.empty() && !dependsOnValues_ ? true : BindReferences(run);
  }

  // What a mark at the end of a number, or of any other text, says of it: that it is relative ("R"), a
  // direction ("°") or both, which nothing can be.
  enum class Mark : std::uint8_t { None, Relative, Degrees, Both };
  Mark MarkOf(std::size_t n) const {
    Known(n);
    return n > Count() ? Mark::None : parameters_[n - 1].Number.What;
  }

  struct MarkedNumber {
    double Value = 0;
    Mark What = Mark::None;
  };
  // The parameter, where its number was read already or is nothing but its digits; else null. It never is a
  // fault.
  const MarkedNumber* Known(std::size_t n) const {
    if (n > Count()) return nullptr;
    const Parameter& parameter = parameters_[n - 1];
    if (parameter.Read == Reading::Number) return &parameter.Number;
    return parameter.Read == Reading::Unread ? ReadDigits(n) : nullptr;
  }

  // An empty text is one parameter.
  std::size_t Count() const { return parameters_.size() - 1; }
  // All parameters as they stand.
  std::string_view Whole() const { return Rest(1); }
  // The parameter as it stands, blanks included, and the same without blanks around it.
  std::string_view Text(std::size_t n) const;
  std::string_view Trimmed(std::size_t n) const;
  bool IsEmpty(std::size_t n) const;  // but for blanks
  // The part of parameter n after so many second separators, as it stands; it is empty where there are fewer.
  std::string_view Part(std::size_t n, std::size_t part) const;
  // Parameter n with everything after it.
  std::string_view Rest(std::size_t n) const;

  // The parameter's value; there is none when the parameter is missing or empty. Only the part before the
  // second separator counts, and one unit mark ("°", "R") at its end is passed over. What is no expression is
  // a fault.
  std::optional<double> Number(std::size_t n) const {
    const MarkedNumber* const known = Known(n);
    return known ? known->Value : ReadNumber(n);
  }
  double NumberOr(std::size_t n, double otherwise) const { return Number(n).value_or(otherwise); }
  // A missing parameter is a fault.
  double RequiredNumber(std::size_t n) const;

  const vaxel::Separators& Separators() const { return *separators_; }

 private:
  static constexpr std::uint32_t NoReference = 0xFFFFFFFF;
  // The mark at the end is known once the text was looked at.
  enum class Reading : std::uint8_t { Unread, NotDigits, Number };
  struct Parameter {
    std::size_t Start = 0;
    std::uint32_t Reference = NoReference;  // in references_
    Reading Read = Reading::Unread;
    MarkedNumber Number;
  };
  // A parameter whose references are replaced.
  struct Reference {
    std::size_t N = 0;
    ParameterParts Parts;
    // Its number, as long as the variables in it hold numbers. Where there is none, the number is read from
    // the text.
    std::optional<Expression> Value;
    Mark What = Mark::None;
    bool MayBringSeparators = false;  // as they are ordinary characters in it
    // The rest tells of the line as it is run.
    bool IsNumber = false;
    mutable bool IsWritten = false;  // whether Text holds its text
    mutable std::string Text;
  };

  void Split(std::string_view text, const vaxel::Separators& separators, std::size_t most);
  void AddReference(std::size_t n, const CommandRow& row, const ReferenceScope& scope);
  bool BindReferences(const RunContext& run);
  std::optional<double> ReadNumber(std::size_t n) const;
  const MarkedNumber* ReadDigits(std::size_t n) const;
  const MarkedNumber* Note(std::size_t n, MarkedNumber number) const;
  const std::string& Written(const Reference& reference) const;
  std::string_view Joined() const;

  std::string_view text_;
  const vaxel::Separators* separators_ = nullptr;
  // The list has one more than there are, as if it began after the last.
  mutable std::vector<Parameter> parameters_;
  std::vector<Reference> references_;
  Program program_;
  bool dependsOnValues_ = false;  // how the text is split
  const RunContext* run_ = nullptr;
  mutable std::string joined_;  // all of them, references replaced; empty: not wanted yet
};

// The value of a numeric parameter's text, see Parameters::Number.
std::optional<double> NumberOf(std::string_view parameter, const Separators& separators);
// The value of an expression that must be one throughout; an empty text has none. A fault shows the
// expression, or the text of which it is a part.
std::optional<double> StrictValue(std::string_view expression, const Separators& separators,
                                  std::string_view shown = {});
// Throws a fault that shows what is no expression, and says where and what is written instead. Of a text that
// only holds the expression that one is looked at; empty: all of it.
[[noreturn]] void FailExpression(std::string_view shown, std::string_view expression = {});

// Whether a parameter is literal text, in which "%" is an ordinary character: "=", blanks before it allowed,
// or "<" stands before it as a mark.
bool IsLiteral(std::string_view parameter);
// The text that is drawn for a parameter: what follows a literal's mark, else the parameter without blanks
// around it.
std::string_view TextOf(std::string_view parameter);

// The parts of a text between the occurrences of a separator; an empty text is one part.
std::vector<std::string_view> SplitAt(std::string_view text, std::string_view separator);

}  // namespace vaxel
