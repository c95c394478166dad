// From the start of a process to its first drawn window, beside a bare window with a menu, an
// editor and a view, and the memory of both once they rest.
//
// Both are processes of their own, started in turn. Each ends by itself: it writes when its
// first painting was done, waits half a second, writes its memory and leaves.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "../targets.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 15;

struct Start {
  double clock = 0;  // ms to the first window
  double cpu = 0;    // ms of the processor until the end
  double rss = 0;    // MB
  double pss = 0;
};

double Now() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

std::string Beside(const char* name) {
  char own[PATH_MAX] = {};
  if (readlink("/proc/self/exe", own, sizeof own - 1) <= 0) std::abort();
  return (fs::path(own).parent_path() / name).string();
}

// The program writes three numbers: when it had painted (ms of the same clock), RSS, PSS (KB).
bool Run(const std::string& program, Start& start) {
  int ends[2];
  if (pipe(ends) != 0) return false;
  const double before = Now();
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    execl(program.c_str(), program.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  close(ends[1]);
  std::FILE* out = fdopen(ends[0], "r");
  double painted = 0;
  const int got = std::fscanf(out, "%lf %lf %lf %lf", &painted, &start.cpu, &start.rss, &start.pss);
  std::fclose(out);
  int status = 0;
  waitpid(child, &status, 0);
  start.clock = painted - before;
  start.rss /= 1024;
  start.pss /= 1024;
  return got == 4;
}

void StartToFirstWindow(benchmark::State& state) {
  const std::string ours = Beside("start_workbench");
  const std::string bare = Beside("start_bare");
  std::vector<double> clocks[2];
  std::vector<double> cpus[2];
  Start last[2];
  for (auto _ : state) {
    for (int round = 0; round <= kRounds; ++round) {
      for (int which = 0; which < 2; ++which) {
        if (!Run(which == 0 ? ours : bare, last[which])) {
          state.SkipWithError("a window did not come up");
          return;
        }
        if (round == 0) continue;  // files come into memory
        clocks[which].push_back(last[which].clock);
        cpus[which].push_back(last[which].cpu);
      }
    }
  }
  const double ourTime = targets::Median(clocks[0]);
  const double bareTime = targets::Median(clocks[1]);
  const double ourCpu = targets::Median(cpus[0]);
  const double bareCpu = targets::Median(cpus[1]);
  state.counters["ms"] = ourTime;
  state.counters["bare_ms"] = bareTime;
  state.counters["ratio"] = ourTime / bareTime;
  state.counters["cpu_ms"] = ourCpu;
  state.counters["bare_cpu_ms"] = bareCpu;
  targets::Note({"Start to the first window", "ms", 0, 0, 2.5, "bare window"}, ourTime, bareTime);
  targets::Note({"  in processor time", "ms", 0, 0, 2.5, "bare window"}, ourCpu, bareCpu);
  targets::Note({"Memory after start, RSS", "MB", 0, 0, 2, "bare window"}, last[0].rss,
                last[1].rss);
  targets::Note({"Memory after start, PSS", "MB", 0, 0, 2, "bare window"}, last[0].pss,
                last[1].pss);
}

BENCHMARK(StartToFirstWindow)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace

// Once is enough: the rounds are inside.
int main(int argc, char** argv) {
  std::vector<char*> kept(argv, argv + argc);
  static char once[] = "--benchmark_repetitions=1";
  static char all[] = "--benchmark_report_aggregates_only=false";
  kept.push_back(once);
  kept.push_back(all);
  int count = static_cast<int>(kept.size());
  kept.push_back(nullptr);
  // A settings file and documents of its own.
  std::string home = (fs::temp_directory_path() / "start-bench-XXXXXX").string();
  if (!mkdtemp(home.data())) return 1;
  setenv("HOME", home.c_str(), 1);
  benchmark::Initialize(&count, kept.data());
  benchmark::RunSpecifiedBenchmarks();
  std::error_code ignored;
  fs::remove_all(home, ignored);
  return 0;
}
