// Scripts with what must come of them beside them: tests/scripts/*.txt. A case is a block of lines, blocks
// are apart by blank lines:
//
//   # why, or how the numbers were worked out
//   @printer, @zoom 2, @zmm 1.25, @offset 30 -20, @set %Name value, @cancel     the target, the variables and
//   the answer to boxes, if need be
//   the script, on a screen of 200 × 200 mm of 96 dpi or on A4 paper of 600 dpi
//   ==> what comes of it, a line each: "comment LINE:text", "notice LINE:text", "box LINE:title\ntext" (line
//       ends and TABs as "\n" and "\t"), the display list, "error LINE: reason"; "nothing"; or only how many
//       operations there are, "11 operations"
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/script_run.h"
#include "text/text.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

struct ScriptCase {
  RunSettings Settings;
  std::string Script, Expected;
};

void ReadDirective(std::istringstream line, RunSettings& settings) {
  std::string name;
  line >> name;
  if (name == "@printer") settings = ForPrinter();
  if (name == "@zoom") line >> settings.Target.Zoom;
  if (name == "@zmm") line >> settings.Target.Zmm;
  if (name == "@cancel") settings.AnswersOk = false;
  if (name == "@offset") line >> settings.Target.OffX >> settings.Target.OffY;
  if (name != "@set") return;
  line >> name;
  std::string value;
  std::getline(line, value);
  settings.Variables.emplace_back(name, Trim(value));
}

std::string InOneLine(std::string_view text) {
  std::string line;
  for (char c : text) {
    if (c == '\n' || c == '\t') {
      line += c == '\n' ? "\\n" : "\\t";
    } else {
      line += c;
    }
  }
  return line;
}

std::string OutcomeOf(const ScriptCase& scriptCase) {
  const ScriptRun run = RunText(scriptCase.Script, scriptCase.Settings);
  std::string outcome;
  for (const std::string& comment : run.Comments) outcome += "comment " + comment + "\n";
  for (const std::string& notice : run.Notices) outcome += "notice " + notice + "\n";
  for (const std::string& box : run.Boxes) outcome += "box " + InOneLine(box) + "\n";
  for (const ErrorReport& error : run.Errors) {
    outcome += "error " + std::to_string(error.LineNumber) + ": " + std::string(Trim(run.Reason())) + "\n";
  }
  if (run.Errors.empty()) outcome += ListText(run.List);
  if (scriptCase.Expected.ends_with(" operations\n"))
    return std::to_string(run.List.Size()) + " operations\n";
  return outcome.empty() ? "nothing\n" : outcome;
}

class ScriptCases : public testing::TestWithParam<const char*> {};

TEST_P(ScriptCases, DoWhatStandsBesideThem) {
  const fs::path path = fs::path(VAXEL_SOURCE_DIR) / "tests/scripts" / (std::string(GetParam()) + ".txt");
  std::ifstream file(path);
  ScriptCase scriptCase;
  int cases = 0;
  int number = 1;
  const auto endCase = [&] {
    if (!scriptCase.Expected.empty()) {
      EXPECT_EQ(OutcomeOf(scriptCase), scriptCase.Expected) << path << ", before line " << number;
      ++cases;
    }
    scriptCase = {};
  };
  for (std::string line; std::getline(file, line); ++number) {
    if (line.empty()) {
      endCase();
    } else if (line.starts_with("@")) {
      ReadDirective(std::istringstream(line), scriptCase.Settings);
    } else if (line.starts_with("==> ")) {
      scriptCase.Expected += line.substr(4) + "\n";
    } else if (!line.starts_with("#")) {
      scriptCase.Script += line + "\n";
    }
  }
  endCase();
  EXPECT_GT(cases, 5);
}

INSTANTIATE_TEST_SUITE_P(, ScriptCases,
                         testing::Values("language", "lines", "pens", "scale", "surface", "text", "values",
                                         "variables"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace vaxel::test
