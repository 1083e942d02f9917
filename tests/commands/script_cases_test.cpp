// Scripts with what must come of them beside them: tests/scripts/*.txt. A case is a block of lines, blocks
// are apart by blank lines:
//
//   # why, or how the numbers were worked out
//   @printer, @pixels, @zoom 2, @zmm 1.25, @offset 30 -20, @set %Name value, @cancel     the target, which is
//   for a file unless it shows its own pixels, the variables and the answer to boxes, if need be
//   @file NAME text\nmore, @answer text     a file that there is, its line ends as "\n"; the next answer to a
//   question, "cancel" for none
//   @picture logo.png 120 60 300     a picture file that there is, so many pixels across and down and an inch
//   the script, on a screen of 200 × 200 mm of 96 dpi or on A4 paper of 600 dpi
//   ==> what comes of it, a line each: "comment LINE:text", "notice LINE:text", "box LINE:title\ntext" (line
//       ends and TABs as "\n" and "\t"), "error [FILE:]LINE: reason", the display list or only how many
//       operations there are, "11 operations"; "nothing"
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/text.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

struct ScriptCase {
  RunSettings Settings;
  std::string Script, Expected;
};

std::string Big32(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

// A PNG file as far as its size can be told from it: nothing decodes it here.
std::string HeadOfPng(std::uint32_t width, std::uint32_t height, double dpi) {
  const auto chunk = [](const std::string& type, const std::string& data) {
    return Big32(static_cast<std::uint32_t>(data.size())) + type + data + Big32(0);
  };
  std::string file =
      "\x89PNG\r\n\x1A\n" + chunk("IHDR", Big32(width) + Big32(height) + std::string("\x08\x02\0\0\0", 5));
  if (dpi > 0) {
    const std::string density = Big32(static_cast<std::uint32_t>(std::lround(dpi / 0.0254)));
    file += chunk("pHYs", density + density + "\x01");
  }
  return file + chunk("IDAT", "") + chunk("IEND", "");
}

std::string WithLineEnds(std::string_view text) {
  std::string lines(text);
  for (std::size_t at; (at = lines.find("\\n")) != std::string::npos;) lines.replace(at, 2, "\n");
  return lines;
}

void ReadDirective(std::istringstream line, RunSettings& settings) {
  std::string name;
  line >> name;
  if (name == "@printer") settings = ForPrinter();
  if (name == "@pixels") settings.Target.IsPixelDevice = true;
  if (name == "@zoom") line >> settings.Target.Zoom;
  if (name == "@zmm") line >> settings.Target.Zmm;
  if (name == "@cancel") settings.AnswersOk = false;
  if (name == "@picture") {
    std::uint32_t width = 0, height = 0;
    double dpi = 0;
    line >> name >> width >> height >> dpi;
    settings.Files[name] = HeadOfPng(width, height, dpi);
  }
  if (name == "@offset") line >> settings.Target.OffX >> settings.Target.OffY;
  std::string value;
  if (name == "@answer") {
    std::getline(line, value);
    settings.Answers.emplace_back(Trim(value));
  }
  if (name != "@set" && name != "@file") return;
  const bool isFile = name == "@file";
  line >> name;
  std::getline(line, value);
  if (isFile) {
    settings.Files[name] = WithLineEnds(Trim(value));
  } else {
    settings.Variables.emplace_back(name, Trim(value));
  }
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
    const std::string file = error.FileName == scriptCase.Settings.FileName ? "" : error.FileName + ":";
    outcome +=
        "error " + file + std::to_string(error.LineNumber) + ": " + InOneLine(Trim(run.Reason())) + "\n";
  }
  if (scriptCase.Expected.ends_with(" operations\n")) {
    outcome += std::to_string(run.List.Size()) + " operations\n";
  } else if (run.Errors.empty()) {
    outcome += ListText(run.List);
  }
  return outcome.empty() ? "nothing\n" : outcome;
}

class ScriptCases : public testing::TestWithParam<std::string> {};

TEST_P(ScriptCases, DoWhatStandsBesideThem) {
  const fs::path path = fs::path(VAXEL_SOURCE_DIR) / "tests/scripts" / (GetParam() + ".txt");
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

std::vector<std::string> CaseFiles() {
  std::vector<std::string> names;
  for (const auto& file : fs::directory_iterator(fs::path(VAXEL_SOURCE_DIR) / "tests/scripts")) {
    if (file.path().extension() == ".txt") names.push_back(file.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

INSTANTIATE_TEST_SUITE_P(, ScriptCases, testing::ValuesIn(CaseFiles()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace vaxel::test
