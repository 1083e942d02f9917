#include "commands/parameter_list.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/parameters.h"
#include "tests/support/sample_lines.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

// The files that the samples name.
RunSettings WithFiles(bool forPrinter) {
  RunSettings settings = forPrinter ? ForPrinter() : RunSettings{};
  settings.Answers = {"5"};
  settings.Files = {{"part.dat", "CT = 0, 0, N\nCercle = 0, 0, 2"},
                    {"values.txt", "7\n8\n"},
                    {"points.txt", "0 0\n5 40\n10 100\n"}};
  std::ifstream picture(VAXEL_SOURCE_DIR "/tests/pictures/clear.png", std::ios::binary);
  settings.Files["clear.png"] = {std::istreambuf_iterator<char>(picture), {}};
  return settings;
}

// All that a run of a sample leaves: what it drew, what the variables hold, what it said.
std::string OutcomeOf(const CommandRow& row, const std::string& line, bool forPrinter = true) {
  const std::string script = BeforeSample(row) + line + AfterSample(row);
  const ScriptRun run = RunText(script, WithFiles(forPrinter));
  std::string outcome = PagesText(run.List);
  for (const auto& [name, value] : run.Variables) outcome += name + "=" + value + "\n";
  for (const std::string& box : run.Boxes) outcome += "box " + box.substr(0, box.find('\n')) + "\n";
  for (const ErrorReport& error : run.Errors) outcome += "error " + error.Text + "\n";
  return outcome;
}

bool IsDead(const CommandRow& row) {
  return row.Help == Help::Facteur;  // refused in a main script
}

TEST(ParameterList, CountsAsTheTableDoes) {
  for (const CommandRow& row : CommandTable()) {
    std::size_t most = 0;
    for (const ParameterForm& form : FormsOf(row)) {
      most = std::max(most, form.RepeatsFrom != 0 ? CommandRules::AnyNumber : form.Parameters.size());
      if (row.Rules.TextFrom == 0) continue;
      EXPECT_EQ(form.Parameters.size(), row.Rules.TextFrom) << row.Keyword;
    }
    if (row.Rules.Most == CommandRules::AnyNumber) continue;
    EXPECT_EQ(most, row.Rules.Most) << row.Keyword;
  }
}

// A kind that stands at a wrong place makes a line that a run refuses, or takes for another form.
TEST(ParameterList, ARunTakesASampleOfEveryForm) {
  int count = 0;
  for (const CommandRow& row : CommandTable()) {
    if (IsDead(row)) continue;
    for (const ParameterForm& form : FormsOf(row)) {
      const std::string line = SampleLine(row, form);
      const bool forPrinter = row.Rules.Where != Scope::ScreenOnly;
      const std::string outcome = OutcomeOf(row, line, forPrinter);
      EXPECT_EQ(outcome.find("error "), std::string::npos) << line << "\n" << outcome;
      if (row.Rules.Form == LineForm::Condition || form.Parameters.empty()) continue;
      const std::size_t equals = line.find('=');
      const std::string text = equals == std::string::npos ? "" : line.substr(equals + 1);
      EXPECT_EQ(&FormOfLine(row, text, {}), &form) << line;
      EXPECT_EQ(SplitParameters(row, form, text, {}).size(), std::max<std::size_t>(1, form.Parameters.size()))
          << line;
      ++count;
    }
  }
  EXPECT_GT(count, 70);
}

// What stands before the samples, as a parameter would say it; empty where no parameter can.
std::string StandingOf(const CommandRow& row, ParameterKind kind, std::size_t n, std::size_t part) {
  const bool isFirst = row.Rules.OrderLimit != CommandRules::NoLimit;
  switch (kind) {
    case ParameterKind::X:
      return "11";
    case ParameterKind::Y:
      return "12";
    case ParameterKind::Ink:
    case ParameterKind::ColourOrNone:
      return isFirst ? "Noir" : "Bleu";
    case ParameterKind::Pen:
      return part == 0 ? "3" : "";
    case ParameterKind::PenEnds:
      return "R";
    case ParameterKind::ScaleValue:
      return n % 2 == 1 ? "0" : "100";
    default:
      return "";
  }
}

std::string WorthOf(const CommandRow& row, const ParameterForm& form, std::size_t n, std::size_t part) {
  const ParameterPart& described = (*form.At(n))[part];
  switch (described.Default.What) {
    case ParameterDefault::Kind::Worth:
      return std::string(described.Default.Text);
    case ParameterDefault::Kind::Standing:
      return StandingOf(row, described.Kind,
                        row.Keyword.starts_with("ValV") && row.Keyword != "ValV" ? n + 1 : n, part);
    case ParameterDefault::Kind::Parameter:
      return SampleOf(row, form.At(described.Default.N)->front().Kind, {described.Default.N});
    case ParameterDefault::Kind::None:
      break;
  }
  return {};
}

// What the table says stands for a parameter that is left out must come to the same as what it says, and to
// something else than another value.
TEST(ParameterList, DefaultsAreWhatARunTakes) {
  int count = 0;
  for (const CommandRow& row : CommandTable()) {
    if (IsDead(row)) continue;
    for (const ParameterForm& form : FormsOf(row)) {
      for (std::size_t n = 1; n <= form.Parameters.size(); ++n) {
        for (std::size_t part = 0; part < form.At(n)->size(); ++part) {
          const std::string worth = WorthOf(row, form, n, part);
          if (worth.empty()) continue;
          const auto with = [&](const std::string& text) {
            const std::string line = SampleLine(row, form, [&](SamplePlace place, const std::string& usual) {
              return place.N == n && place.Part == part ? text : usual;
            });
            return OutcomeOf(row, line, row.Rules.Where != Scope::ScreenOnly);
          };
          const std::string shown =
              SampleLine(row, form) + " " + std::to_string(n) + "." + std::to_string(part);
          const std::string without = with("");
          EXPECT_TRUE(without == with(worth)) << shown << " " << worth;
          const std::string usual = SampleOf(row, (*form.At(n))[part].Kind, {n, part});
          // Without returns their thickness and colour say nothing.
          const bool saysNothing = row.Keyword == "QA" && part == 1;
          if (saysNothing) continue;
          EXPECT_FALSE(without == with(usual)) << shown << " " << worth;
          ++count;
        }
      }
    }
  }
  EXPECT_GT(count, 150);
}

}  // namespace
}  // namespace vaxel::test
