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

void BM_ScriptToList(benchmark::State& state, StrokeEnds ends) {
  const auto lines = static_cast<std::size_t>(state.range(0));
  const std::string script = TraitScript(lines, ends);
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

BENCHMARK_CAPTURE(BM_ScriptToList, Round, StrokeEnds::Round)
    ->RangeMultiplier(10)
    ->Range(10'000, 1'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ScriptToList, Square, StrokeEnds::Square)
    ->RangeMultiplier(10)
    ->Range(10'000, 1'000'000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vaxel
