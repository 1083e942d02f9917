// From a display list to the bytes of a file, which go nowhere.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "benchmarks/script_lines.h"
#include "render/list_renderer.h"
#include "render/svg_renderer.h"

namespace vaxel {
namespace {

constexpr std::size_t Operations = 100'000;

class NullSink : public ByteSink {
 public:
  void Write(std::string_view bytes) override {
    benchmark::DoNotOptimize(bytes);
    Bytes += bytes.size();
  }

  std::size_t Bytes = 0;
};

template <class Target>
void Render(benchmark::State& state, LineKind kind) {
  DisplayList list;
  RunInto(list, ScriptOf(kind, Operations));
  NullSink sink;
  for (auto _ : state) {
    Target renderer(sink);
    PlayAll(list, renderer);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(sink.Bytes));
  state.counters["operations"] =
      benchmark::Counter(static_cast<double>(list.Size()), benchmark::Counter::kIsIterationInvariantRate);
}

void BM_Svg(benchmark::State& state, LineKind kind) {
  Render<SvgRenderer>(state, kind);
}
void BM_List(benchmark::State& state, LineKind kind) {
  Render<ListRenderer>(state, kind);
}

BENCHMARK_CAPTURE(BM_Svg, Lines, LineKind::Stroke)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Svg, Polygons, LineKind::SquareStroke)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Svg, Texts, LineKind::Text)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_List, Lines, LineKind::Stroke)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_List, Polygons, LineKind::SquareStroke)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_List, Texts, LineKind::Text)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vaxel
