// What the editor knows of a long script: how long it takes to find out, and what it holds.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "app/completion.h"
#include "app/line_surroundings.h"
#include "app/script_survey.h"
#include "app/script_tokens.h"
#include "benchmarks/heap_meter.h"

namespace vaxel {
namespace {

// Lines as in a dial of many loops, 22 bytes each on average.
std::string LongScript(std::size_t lines) {
  std::string text;
  for (std::size_t i = 0; i < lines; ++i) {
    const std::string number = std::to_string(i);
    switch (i % 5) {
      case 0:
        text += "%Rayon" + std::to_string(i % 30) + " = 40 + " + number + "\n";
        break;
      case 1:
        text += "Cercle = 0, 0, %Rayon" + std::to_string((i - 1) % 30) + "\n";
        break;
      case 2:
        text += "Trait = 0, 0, " + number + ", 20, Rouge\n";
        break;
      case 3:
        text += "' mark " + number + "\n";
        break;
      default:
        text += "L" + number + ":\n";
        break;
    }
  }
  return text;
}

class NoFiles : public CompletionSource {
 public:
  std::vector<std::string> FilesIn(std::string_view, std::size_t) override { return {}; }
  std::span<const std::string> Fonts() override { return {}; }
};

void ReadSurvey(benchmark::State& state) {
  const std::string text = LongScript(static_cast<std::size_t>(state.range(0)));
  double bytes = 0;
  {
    const HeapMeter meter;
    ScriptSurvey survey;
    survey.Read(text);
    bytes = meter.Held();
  }
  for (auto _ : state) {
    ScriptSurvey survey;
    survey.Read(text);
    benchmark::DoNotOptimize(survey);
  }
  state.counters["bytes_a_character"] = bytes / static_cast<double>(text.size());
}
BENCHMARK(ReadSurvey)->Arg(1000)->Arg(50'000)->Unit(benchmark::kMillisecond);

void ColourALine(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(TokensOfLine("Trait = 0, %Rayon * 2, SIN(45) * 20, 20, Rouge ' mark", {}));
  }
}
BENCHMARK(ColourALine)->Unit(benchmark::kMicrosecond);

void CompleteAtTheEnd(benchmark::State& state) {
  const auto lines = static_cast<std::size_t>(state.range(0));
  ScriptSurvey survey;
  survey.Read(LongScript(lines));
  const StringTable strings;
  NoFiles outside;
  for (auto _ : state) {
    const LineSurroundings surroundings(survey, lines, [](std::size_t) { return std::string(); });
    benchmark::DoNotOptimize(Complete({"Cercle = 0, 0, %Ra", 18, lines, false},
                                      {surroundings.Context(), survey, outside, {strings, 0}}));
  }
}
BENCHMARK(CompleteAtTheEnd)->Arg(1000)->Arg(50'000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vaxel
