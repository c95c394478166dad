// A text that stands nowhere, looked for and counted in 1,000,000 lines.
//
// Beside it runs `grep -c -F` over the same bytes as a process, with its reading. Its locale is
// that of plain bytes, in which it is fastest.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "codetools/find_match.h"
#include "codetools/find_rules.h"
#include "cpu_time.h"
#include "programs.h"
#include "targets.h"

namespace {

constexpr int kLines = 1000000;
constexpr char kAbsent[] = "G02 X7.5 Q";
constexpr char16_t kAbsentUnits[] = u"G02 X7.5 Q";
constexpr char kDigits[] = "99999.1";  // of units that stand everywhere
constexpr char16_t kDigitUnits[] = u"99999.1";

double ChildMilliseconds() {
  rusage used;
  getrusage(RUSAGE_CHILDREN, &used);
  const auto of = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
  };
  return of(used.ru_utime) + of(used.ru_stime);
}

struct Program {
  std::string bytes = programs::Lines(kLines);
  std::u16string text{bytes.begin(), bytes.end()};
  std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("morva-find-" + std::to_string(getpid()) + ".nc");
  Program() { std::ofstream(file, std::ios::binary) << bytes; }
  ~Program() { std::filesystem::remove(file); }
  // 0 where it found the text, or there is no such tool.
  double Grep(const char* wanted) const {
    const std::string line =
        std::string("LC_ALL=C grep -c -F '") + wanted + "' '" + file.string() + "' >/dev/null 2>&1";
    const double from = ChildMilliseconds();
    const int status = std::system(line.c_str());
    return status == 256 ? ChildMilliseconds() - from : 0;
  }
};

const Program& Long() {
  static const Program program;
  return program;
}

template <typename Work>
void Beside(benchmark::State& state, const char* wanted, const targets::Goal& goal, Work work) {
  const Program& program = Long();
  std::vector<double> ours;
  std::vector<double> greps;
  for (auto step : state) {
    const double from = CpuMilliseconds();
    work(program.text);
    const double spent = CpuMilliseconds() - from;
    state.SetIterationTime(spent * 1e-3);
    ours.push_back(spent);
    greps.push_back(program.Grep(wanted));
  }
  const double grep = targets::Median(greps);
  state.counters["grep_ms"] = grep;
  targets::Note(goal, targets::Median(ours), grep);
}

void FindNothing(benchmark::State& state) {
  Beside(state, kAbsent, {"Find in 1,000,000 lines what is not there", "ms", 0, 0, 2, "grep -c -F"},
         [](const std::u16string& text) {
           if (morva::FindMatch(text, 0, kAbsentUnits, false, false) != text.npos) std::abort();
         });
}

void CountNothing(benchmark::State& state) {
  Beside(state, kDigits, {"Count in 1,000,000 lines digits not there", "ms", 0, 0, 2, "grep -c -F"},
         [](const std::u16string& text) {
           if (morva::CountOccurrences(text, kDigitUnits) != 0) std::abort();
         });
}

BENCHMARK(FindNothing)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);
BENCHMARK(CountNothing)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
