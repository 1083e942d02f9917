// What must be known around a line of a script to understand it, taken from a survey of the script.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "app/script_survey.h"
#include "app/script_tokens.h"

namespace vaxel {

// Puts a line that goes on in the next one behind those before it, without its mark. The result is false, and
// nothing is put, for a line that does not go on.
bool AppendContinued(std::string& before, std::string_view line);

class LineSurroundings {
 public:
  // The survey must outlive this and stay as it is; lineOf is asked for the lines that the line goes on from.
  LineSurroundings(const ScriptSurvey& survey, std::size_t line, const ScriptSurvey::LineOf& lineOf);
  LineSurroundings(const LineSurroundings&) = delete;
  LineSurroundings& operator=(const LineSurroundings&) = delete;

  const LineContext& Context() const { return context_; }

 private:
  std::string before_;
  LineContext context_;
};

}  // namespace vaxel
