// How fast a guided skim is checked, written and read back, as with every character that the user
// types, beside a loop that puts as many numbers into text.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "cpu_time.h"
#include "simulator/extract.h"
#include "simulator/motion_path.h"
#include "skim/geometry/skim_code.h"
#include "skim/model/plan_check.h"
#include "targets.h"
#include "text/codetext.h"

namespace {

using namespace morva;

// 998 rows and the two that are kept back, twenty times.
SkimPlan LargestRaster() {
  SkimPlan plan;
  plan.yMax = 998;
  plan.diameter = 1;
  plan.stepoverPercent = 100;
  plan.passCount = 20;
  return plan;
}

// 141 points of the circle and 29,849 of the spiral, and ten more.
SkimPlan LargestSpiral() {
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  plan.stepoverPercent = 100;
  plan.diameter = 2 * 141 / 29848.5;
  plan.passCount = 1;
  return plan;
}

std::u16string CodeOf(const SkimPlan& plan) {
  CodeWriter out;
  if (!BuildSkimProgram(plan, out)) std::abort();
  return out.text;
}

void Whole(const SkimPlan& plan) {
  const char16_t* message = nullptr;
  if (!ValidateSkimPlan(plan, message)) std::abort();
  const std::u16string text = CodeOf(plan);
  ExtractInto(path, text, {.metric = plan.metric});
  benchmark::DoNotOptimize(path.count);
}

// The least: the numbers of the code alone, one behind the other.
void NumbersOnly(std::size_t numbers) {
  std::u16string text;
  text.reserve(numbers * 12);
  char16_t number[64];
  for (std::size_t i = 0; i < numbers; ++i) {
    const int units = FormatFixed(static_cast<double>(i) * 0.0371, kSkimDecimals, number, 64);
    text.append(number, static_cast<std::size_t>(units));
  }
  benchmark::DoNotOptimize(text.data());
}

std::size_t NumbersIn(const std::u16string& text) {
  std::size_t numbers = 0;
  for (const char16_t c : text) numbers += c == u'.';
  return numbers;
}

template <typename Work>
double BestOf(Work work) {
  double best = 1e9;
  for (int round = 0; round < 5; ++round) {
    const double start = CpuMilliseconds();
    work();
    best = std::min(best, CpuMilliseconds() - start);
  }
  return best;
}

void BM_Raster(benchmark::State& state) {
  const SkimPlan plan = LargestRaster();
  for (auto _ : state) Whole(plan);
  const std::size_t numbers = NumbersIn(CodeOf(plan));
  targets::Note({"Skim of 20,000 rows, checked to path", "ms", 0, 30, 0, "its numbers as text"},
                BestOf([&] { Whole(plan); }), BestOf([&] { NumbersOnly(numbers); }));
}

void BM_Spiral(benchmark::State& state) {
  const SkimPlan plan = LargestSpiral();
  for (auto _ : state) benchmark::DoNotOptimize(CodeOf(plan).data());
  const std::size_t numbers = NumbersIn(CodeOf(plan));
  targets::Note({"Spiral of 30,000 points as code", "ms", 0, 10, 0, "its numbers as text"},
                BestOf([&] { benchmark::DoNotOptimize(CodeOf(plan).data()); }),
                BestOf([&] { NumbersOnly(numbers); }));
}

BENCHMARK(BM_Raster)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Spiral)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
