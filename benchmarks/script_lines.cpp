#include "benchmarks/script_lines.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "commands/command_table.h"
#include "interpreter/run.h"

namespace vaxel {
namespace {

class SilentHost : public RunHost {
 public:
  void ShowError(const ErrorReport& report) override {
    std::fprintf(stderr, "line %u: %s\n", report.LineNumber, report.Text.c_str());
  }
  RunSignal ProcessPendingEvents() override { return RunSignal::GoOn; }
  void WriteComment(std::string_view, std::uint32_t, std::string_view) override {}
  void ShowNotice(std::string_view, std::uint32_t, std::string_view) override {}
  bool Confirm(BoxKind, std::string_view, std::uint32_t, std::string_view, std::string_view) override {
    return true;
  }
  Answer Ask(std::string_view, std::uint32_t, std::string_view, std::string_view) override {
    return {Answer::Kind::Unavailable};
  }
  std::string Today() override { return {}; }
  std::string FullFileName(std::string_view fileName) override { return std::string(fileName); }
  std::string FindFile(std::string_view, std::string_view) override { return {}; }
  Result<std::string> ReadFile(std::string_view, std::size_t) override { return Failure{}; }
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

std::string LineOf(LineKind kind, std::size_t index, std::mt19937& random) {
  static constexpr std::array<std::string_view, 5> texts = {"47.5 kV", "Volts", "Class 1.5", "Direct current",
                                                            "of the outer bearing"};
  const auto numbers = [&](int count, std::string text) {
    for (int i = 0; i < count; ++i) {
      if (i > 0) text += ", ";
      AppendNumber(text, random);
    }
    return text;
  };
  switch (kind) {
    case LineKind::Stroke:
    case LineKind::SquareStroke:
      return numbers(4, "Trait = ");
    case LineKind::Step:
      return numbers(2, "Trait = , , ");
    case LineKind::Text:
      return numbers(2, "Texte = ").append(", , , ").append(texts[index % texts.size()]);
    case LineKind::Mark:
      return "Grad = 99, 5";
    case LineKind::Value:
      break;
  }
  return "Val = 99, 0, 49.5, 5";
}

}  // namespace

std::string ScriptOf(LineKind kind, std::size_t count) {
  std::mt19937 random(270);
  const bool isScale = kind == LineKind::Mark || kind == LineKind::Value;
  const std::size_t lines = isScale ? count / 100 : count;
  std::string script = isScale                          ? "Arc = -45, 225, 50\n"
                       : kind == LineKind::SquareStroke ? "EpaisT = 3§C\n"
                                                        : "";
  for (std::size_t i = 0; i < lines; ++i) (script += LineOf(kind, i, random)) += '\n';
  return script;
}

std::string ReadScript(const std::string& fileName) {
  constexpr std::size_t maxBytes = std::size_t{512} << 20;
  Result<std::string> bytes = ReadWholeFile(fileName, maxBytes);
  if (bytes) return *std::move(bytes);
  std::fprintf(stderr, "cannot read %s: %s\n", fileName.c_str(),
               StringTable().Text(LanguageBlock, bytes.Why()).c_str());
  std::exit(1);
}

void RunInto(DisplayList& list, std::string script) {
  SilentHost host;
  const StringTable strings;
  RunContext run(host, AllCommands(), strings, list);
  if (RunScript(run, {}, std::move(script), "benchmark.dat") != RunEnd::Completed) std::exit(1);
}

}  // namespace vaxel
