#include "benchmarks/script_lines.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>
#include <utility>

#include "commands/command_table.h"
#include "interpreter/run.h"

namespace vaxel {
namespace {

class SilentHost : public RunHost {
 public:
  void ShowError(const ErrorReport& report) override {
    std::fprintf(stderr, "line %u: %s\n", report.LineNumber, report.Text.c_str());
  }
  void ProcessPendingEvents() override {}
  void WriteComment(std::string_view, std::uint32_t, std::string_view) override {}
  void ShowNotice(std::string_view, std::uint32_t, std::string_view) override {}
  bool Confirm(std::string_view, std::uint32_t, std::string_view, std::string_view) override { return true; }
  std::string Today() override { return {}; }
  std::string FullFileName(std::string_view fileName) override { return std::string(fileName); }
};

// Most numbers of a script have one or two decimals, some have none, few have three.
void AppendNumber(std::string& text, std::mt19937& random) {
  static constexpr std::array<int, 10> decimals = {0, 0, 1, 1, 1, 1, 2, 2, 2, 3};
  const double value = static_cast<double>(random() % 200'000) / 1000 - 100;
  std::array<char, 24> digits{};
  const int length =
      std::snprintf(digits.data(), digits.size(), "%.*f", decimals[random() % decimals.size()], value);
  text.append(digits.data(), static_cast<std::size_t>(length));
}

}  // namespace

std::string TraitScript(std::size_t lines, StrokeEnds ends) {
  std::mt19937 random(270);
  std::string text = ends == StrokeEnds::Square ? "EpaisT = 3§C\n" : "";
  for (std::size_t i = 0; i < lines; ++i) {
    text += "Trait = ";
    for (int n = 0; n < 4; ++n) {
      if (n > 0) text += ", ";
      AppendNumber(text, random);
    }
    text += '\n';
  }
  return text;
}

void RunInto(DisplayList& list, std::string script) {
  SilentHost host;
  RunContext run(host, AllCommands(), list);
  if (RunScript(run, {}, std::move(script), "benchmark.dat") != RunEnd::Completed) std::exit(1);
}

}  // namespace vaxel
