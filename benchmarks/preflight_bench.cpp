// The preflight of a long program, beside a loop that only looks at every character.
#include <benchmark/benchmark.h>

#include <string>

#include "codetools/validator.h"
#include "cpu_time.h"
#include "programs.h"
#include "targets.h"

namespace {

constexpr int kLines = 100000;

std::u16string LongProgram() {
  const std::string bytes = programs::Lines(kLines);
  return std::u16string(bytes.begin(), bytes.end());
}

unsigned Letters(const std::u16string& text) {
  unsigned letters = 0;
  for (const char16_t c : text) {
    if (static_cast<unsigned>((c | 32) - u'a') < 26u) ++letters;
    benchmark::DoNotOptimize(letters);
  }
  return letters;
}

void Preflight(benchmark::State& state) {
  const std::u16string text = LongProgram();
  double checked = 0;
  double walked = 0;
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    benchmark::DoNotOptimize(morva::PreflightReport(text));
    const double middle = CpuMilliseconds();
    benchmark::DoNotOptimize(Letters(text));
    const double end = CpuMilliseconds();
    state.SetIterationTime((middle - start) * 1e-3);
    checked += middle - start;
    walked += end - middle;
  }
  const auto rounds = static_cast<double>(state.iterations());
  state.counters["walks"] = checked / walked;
  targets::Note({"Preflight, 100,000 lines", "ms", 0, 12, 0, "bare walk"}, checked / rounds,
                walked / rounds);
}

BENCHMARK(Preflight)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
