// From a script's text to its display list: speed, memory, and whether both grow with the script alone.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>

#include "benchmarks/heap_meter.h"
#include "benchmarks/script_lines.h"

namespace vaxel {
namespace {

void MeasureHeap(benchmark::State& state, const std::string& script, double lines) {
  DisplayList list;
  const HeapMeter meter;
  RunInto(list, script);
  state.counters["heap_per_operation"] = meter.Held() / static_cast<double>(list.Size());
  state.counters["peak_per_line"] = meter.Peak() / lines;
}

void BM_ScriptToList(benchmark::State& state, LineKind kind) {
  const auto lines = static_cast<std::size_t>(state.range(0));
  const std::string script = ScriptOf(kind, lines);
  for (auto _ : state) {
    auto list = std::make_unique<DisplayList>();
    RunInto(*list, script);
    benchmark::DoNotOptimize(list->Size());
    state.PauseTiming();
    list.reset();
    state.ResumeTiming();
  }
  const auto count = static_cast<double>(lines);
  state.counters["lines"] = benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate);
  state.counters["time_per_line"] =
      benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  MeasureHeap(state, script, count);
}

void Counts(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(10'000, 1'000'000)->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(BM_ScriptToList, Stroke, LineKind::Stroke)->Apply(Counts);
BENCHMARK_CAPTURE(BM_ScriptToList, SquareStroke, LineKind::SquareStroke)->Apply(Counts);
BENCHMARK_CAPTURE(BM_ScriptToList, Step, LineKind::Step)->Apply(Counts);
BENCHMARK_CAPTURE(BM_ScriptToList, Text, LineKind::Text)->Apply(Counts);
BENCHMARK_CAPTURE(BM_ScriptToList, Mark, LineKind::Mark)->Apply(Counts);
BENCHMARK_CAPTURE(BM_ScriptToList, Value, LineKind::Value)->Apply(Counts);

// One million passes of a loop; 20,000 of the one whose variable grows.
void BM_Loop(benchmark::State& state, const char* fileName) {
  const std::string script = ReadScript(std::string(VAXEL_BENCHMARKS "/") + fileName);
  for (auto _ : state) {
    auto list = std::make_unique<DisplayList>();
    RunInto(*list, script);
    benchmark::DoNotOptimize(list->Size());
    state.PauseTiming();
    list.reset();
    state.ResumeTiming();
  }
}
BENCHMARK_CAPTURE(BM_Loop, Count, "count.dat")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Loop, Grow, "grow.dat")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Loop, Wave, "wave.dat")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vaxel
