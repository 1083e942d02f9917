#include "interpreter/script_fault.h"

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

std::string ScriptFault::Description(const StringTable& strings, int languageBase) const {
  if (reason_ == FaultReason::None) return {};
  std::string text = strings.Text(languageBase, reason_, value_, second_, third_);
  if (!arithmetic_) return text;
  return std::string(strings.Text(languageBase, FaultReason::DivisionByZero)) + " (" + text + ")";
}

double RequireFinite(double value) {
  if (std::isnan(value)) throw ScriptFault(FaultReason::Domain);
  if (std::isinf(value)) throw ScriptFault(FaultReason::Overflow);
  return value;
}

}  // namespace vaxel
