// Lines of every command of the table, made from what the table says of its parameters.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "commands/parameter_list.h"

namespace vaxel::test {

// A place of a line: parameter n, from 1, and its part, from 0.
struct SamplePlace {
  std::size_t N = 0, Part = 0;
};

// The text that stands for a kind at a place.
std::string SampleOf(const CommandRow& row, ParameterKind kind, SamplePlace place);

// A line of the command in one of its forms, which a run carries out without a fault. change may give the
// text of a place another one.
using ChangeSample = std::function<std::string(SamplePlace place, const std::string& text)>;
std::string SampleLine(const CommandRow& row, const ParameterForm& form, const ChangeSample& change = {});

// What a run needs before any of these lines, and after it: a line that shows where the current point, pen,
// colour and font are.
std::string BeforeSample(const CommandRow& row);
std::string AfterSample(const CommandRow& row);

}  // namespace vaxel::test
