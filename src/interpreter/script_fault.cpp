#include "interpreter/script_fault.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "resources/string_table.h"

namespace vaxel {
namespace {

FaultReason ReasonOf(const DrawingFault& fault) {
  switch (fault.Why) {
    case DrawingFault::Reason::TooManyOperations:
      return FaultReason::TooManyOperations;
    case DrawingFault::Reason::TooMuchText:
      return FaultReason::TooMuchText;
    case DrawingFault::Reason::TooManyPictures:
      return FaultReason::TooManyPictures;
    case DrawingFault::Reason::TooMuchDrawn:
      return FaultReason::TooMuchDrawn;
    case DrawingFault::Reason::OutOfRange:
      break;
  }
  return FaultReason::Overflow;
}

}  // namespace

ScriptFault::ScriptFault(const DrawingFault& fault) : ScriptFault(ReasonOf(fault)) {}

ScriptFault ScriptFault::Arithmetic(FaultReason reason, std::string value) {
  ScriptFault fault(reason, std::move(value));
  fault.arithmetic_ = true;
  return fault;
}

bool ScriptFault::DependsOnValues() const {
  // What is wrong with the line or its variables themselves, or with all that was drawn, has nothing to do
  // with one value.
  constexpr auto others = std::to_array<FaultReason>({FaultReason::None,
                                                      FaultReason::UnknownVariable,
                                                      FaultReason::TooManyVariables,
                                                      FaultReason::CircularVariable,
                                                      FaultReason::ReadOnlyVariable,
                                                      FaultReason::BadVariableName,
                                                      FaultReason::DuplicateLabel,
                                                      FaultReason::UnfinishedLine,
                                                      FaultReason::TooManyOperations,
                                                      FaultReason::TextTooLong,
                                                      FaultReason::TooMuchText,
                                                      FaultReason::TooManyPictures,
                                                      FaultReason::TooMuchDrawn,
                                                      FaultReason::TooManyLabels,
                                                      FaultReason::OutOfMemory,
                                                      FaultReason::Unforeseen,
                                                      FaultReason::TimeUp,
                                                      FaultReason::NoAnswer,
                                                      FaultReason::MissingThen,
                                                      FaultReason::NotAList,
                                                      FaultReason::LabelBehindStop,
                                                      FaultReason::LabelWithBlank,
                                                      FaultReason::MissingName,
                                                      FaultReason::LonePercentSign,
                                                      FaultReason::NameGoesOn,
                                                      FaultReason::NotPassed,
                                                      FaultReason::MissingCommand,
                                                      FaultReason::GivenTwice,
                                                      FaultReason::NestedCommands,
                                                      FaultReason::EmptyAnswer,
                                                      FaultReason::TooMuchInVariables,
                                                      FaultReason::NoDataFile});
  return kind_ == FaultKind::Line && std::find(others.begin(), others.end(), reason_) == others.end();
}

std::string ScriptFault::Description(const StringTable& strings, int languageBase) const {
  std::string text;
  if (reason_ != FaultReason::None) text = strings.Text(languageBase, reason_, value_, second_, third_);
  if (arithmetic_)
    text = std::string(strings.Text(languageBase, FaultReason::DivisionByZero)) + " (" + text + ")";
  for (const Hint& hint : hints_) {
    if (!text.empty()) text += '\n';
    text += strings.Text(languageBase, hint.Text, hint.Value, hint.Second);
  }
  return text;
}

double RequireFinite(double value) {
  if (std::isnan(value)) throw ScriptFault(FaultReason::Domain);
  if (std::isinf(value)) throw ScriptFault(FaultReason::Overflow);
  return value;
}

}  // namespace vaxel
