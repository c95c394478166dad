// A batch of 24 replacement rules over a long program, beside `sed` and a bare copying loop.
//
// Most of the rules stand nowhere, so that every one is asked at every place where its first
// letter is. `sed` is a whole process with its reading and writing; the loop copies the text
// character by character, which is the least that any pass does.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "codetools/find_rules.h"
#include "cpu_time.h"
#include "programs.h"
#include "targets.h"

namespace {

constexpr std::size_t kUnits = 1900000;
constexpr char kBefore[] = "/rules_bench_before.nc";
constexpr char kAfter[] = "/rules_bench_after.nc";

std::string Program() {
  std::string text = programs::Lines(80000);
  text.resize(kUnits);
  return text;
}

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

std::string FindOf(int i) {
  if (i == 0) return "F20.";
  return (i % 2 ? "X" : "G01 Y") + std::to_string(700 + i);
}

void FillQueue() {
  morva::ClearRules();
  for (int i = 0; i < morva::kMaxRules; ++i) {
    // The first two stand in the program: every ninth feed and every sequence word.
    std::u16string find = Wide(FindOf(i));
    if (i == 0) find = u"Y-8.5";
    if (i == 1) find = u"X96.";
    morva::AddRule(find, u"Z1.25");
  }
}

std::string SedCommand(const std::string& folder) {
  std::string command = "sed -e 's/Y-8\\.5/Z1.25/g' -e 's/X96\\./Z1.25/g'";
  for (int i = 2; i < morva::kMaxRules; ++i) {
    command += " -e 's/" + FindOf(i) + "/Z1.25/g'";
  }
  return command + " " + folder + kBefore + " > " + folder + kAfter;
}

// Processor time, so that a busy machine does not count; of ended children for the process.
double ChildMilliseconds() {
  rusage used;
  getrusage(RUSAGE_CHILDREN, &used);
  const auto of = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
  };
  return of(used.ru_utime) + of(used.ru_stime);
}

// 0: there is no such tool, or it failed.
double SedMilliseconds(const std::string& program) {
  const char* named = std::getenv("TMPDIR");
  const std::string folder = named ? named : "/tmp";
  std::FILE* file = std::fopen((folder + kBefore).c_str(), "wb");
  if (!file) return 0;
  const bool written = std::fwrite(program.data(), 1, program.size(), file) == program.size();
  if (std::fclose(file) != 0 || !written) return 0;
  const std::string command = SedCommand(folder);
  const double from = ChildMilliseconds();
  const bool ran = std::system(command.c_str()) == 0;
  const double spent = ChildMilliseconds() - from;
  std::remove((folder + kBefore).c_str());
  std::remove((folder + kAfter).c_str());
  return ran ? spent : 0;
}

double CopyMilliseconds(const std::u16string& text) {
  const double from = CpuMilliseconds();
  std::u16string copy;
  copy.reserve(text.size());
  for (const char16_t c : text) copy += c;
  benchmark::DoNotOptimize(copy.data());
  return CpuMilliseconds() - from;
}

void TwentyFourRules(benchmark::State& state) {
  const std::string program = Program();
  const std::u16string text = Wide(program);
  FillQueue();
  std::vector<double> ours;
  std::vector<double> copies;
  int matches = 0;
  for (auto step : state) {
    const double from = CpuMilliseconds();
    const morva::RuleRun run =
        morva::RunRules(text, morva::ruleQueue.rules, morva::ruleQueue.count, false, false);
    const double spent = CpuMilliseconds() - from;
    if (run.overLimit || run.matches == 0) std::abort();
    matches = run.matches;
    ours.push_back(spent);
    copies.push_back(CopyMilliseconds(text));
    state.SetIterationTime(spent * 1e-3);
  }
  const double figure = targets::Median(ours);
  const double copy = targets::Median(copies);
  const double sed = SedMilliseconds(program);
  state.counters["matches"] = matches;
  state.counters["copy_ms"] = copy;
  state.counters["sed_ms"] = sed;
  targets::Note({"24 rules over 1,900,000 characters", "ms", 0, 40, 0, "sed"}, figure, sed);
  targets::Note({"24 rules, beside a copying loop", "ms", 0, 0, 2, "copy"}, figure, copy);
}

BENCHMARK(TwentyFourRules)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
