#include "interpreter/replacement.h"

#include <algorithm>

#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

bool NamesList(VariableUse use, std::size_t parameter) {
  switch (use) {
    case VariableUse::ValueLists:
      return parameter % 4 == 1;
    case VariableUse::ValueTextLists:
      return parameter % 4 == 1 || parameter % 4 == 2;
    case VariableUse::OrientedValueTextLists:
      return parameter % 4 == 2 || parameter % 4 == 3;
    case VariableUse::FirstList:
      return parameter == 1;
    case VariableUse::SecondList:
      return parameter == 2;
    case VariableUse::FourthList:
      return parameter == 4;
    case VariableUse::Replaced:
    case VariableUse::Raw:
      break;
  }
  return false;
}

}  // namespace

ParameterParts PartsOf(std::string_view parameter, std::size_t n, const CommandRow& row,
                       std::string_view secondSeparator) {
  if (IsLiteral(parameter)) return {{}, parameter};
  if (!NamesList(row.Rules.Variables, n)) return {parameter, {}};
  const std::size_t list = std::min(parameter.size(), parameter.find(secondSeparator));
  return {parameter.substr(0, list), parameter.substr(list)};
}

std::string ReplaceVariables(const RunContext& run, std::string_view text, const CommandRow& row) {
  const Separators& separators = run.Separators;
  std::string replaced;
  for (std::size_t number = 1;;) {
    const bool isText = row.Rules.TextFrom != 0 && number >= row.Rules.TextFrom;
    const std::size_t end = isText ? std::string_view::npos : text.find(separators.First);
    const ParameterParts parts = PartsOf(text.substr(0, end), number, row, separators.Second);
    const std::string value = run.Substitute(parts.Replaced);
    if (replaced.size() + value.size() + parts.Kept.size() > MaxTextLength) {
      throw ScriptFault(FaultReason::TextTooLong);
    }
    replaced += value;
    replaced += parts.Kept;
    if (end == std::string_view::npos) return replaced;
    replaced += separators.First;
    text.remove_prefix(end + separators.First.size());
    number += 1 + CountOf(value, separators.First);
  }
}

}  // namespace vaxel
