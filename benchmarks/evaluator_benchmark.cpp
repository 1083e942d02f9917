#include <benchmark/benchmark.h>

#include <string_view>

#include "interpreter/evaluator.h"

namespace vaxel {
namespace {

void BM_Evaluate(benchmark::State& state, std::string_view expression) {
  for (auto _ : state) {
    // The compiler must not know the text: it would read parts of it once for all rounds.
    benchmark::DoNotOptimize(expression);
    benchmark::DoNotOptimize(Evaluate(expression));
  }
}

BENCHMARK_CAPTURE(BM_Evaluate, Plain, "12.5");
BENCHMARK_CAPTURE(BM_Evaluate, Negative, "-148.275");
BENCHMARK_CAPTURE(BM_Evaluate, SixteenDigits, "3.141592653589793");
BENCHMARK_CAPTURE(BM_Evaluate, Sum, "12.5+3");
BENCHMARK_CAPTURE(BM_Evaluate, Mixed, "(2+3)*4-SIN(30)/2");
BENCHMARK_CAPTURE(BM_Evaluate, Power, "2^0.5");
BENCHMARK_CAPTURE(BM_Evaluate, Rounded, "RND2(SQR(2)*100)");
BENCHMARK_CAPTURE(BM_Evaluate, Count, "NBP(1,2,3,4,5,6,7,8)");

}  // namespace
}  // namespace vaxel
