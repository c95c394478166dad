// How fast a program becomes the motion of the machine: straight code, loops of macros, and the
// switch "Machine motion" on against off. Where Debian's rs274 is installed it reads the same file.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cpu_time.h"
#include "documents/program_tabs.h"
#include "documents/text_refresh.h"
#include "interpreter.h"
#include "programs.h"
#include "simulator/control_reader.h"
#include "simulator/machine_path.h"
#include "simulator/toolpath.h"
#include "targets.h"
#include "workbench.h"

namespace {

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

void RunMachine(const std::u16string& text) {
  morva::ReadMachineMotion(morva::machineTrack, text, {});
  benchmark::DoNotOptimize(morva::machinePath.count);
}

// The best of five in processor time, which disturbs a figure least.
template <class Work>
double MillisecondsOf(Work work) {
  double best = 1e9;
  for (int round = 0; round < 5; ++round) {
    const double start = CpuMilliseconds();
    work();
    best = std::min(best, CpuMilliseconds() - start);
  }
  return best;
}

void StraightCode(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  const std::u16string text = Wide(programs::Lines(lines));
  for (auto _ : state) RunMachine(text);
  const double milliseconds = MillisecondsOf([&] { RunMachine(text); });
  state.counters["points"] = morva::machinePath.count;
  targets::Note(
      {lines == 1000000 ? "Machine motion, 1,000,000 lines" : "Machine motion, 100,000 lines",
       "Mlines/s", 5},
      lines * 1e-3 / milliseconds);
}

void StraightCodeBesideInterpreter(benchmark::State& state) {
  const std::u16string text = interpreter::StrictProgram(100000);
  for (auto _ : state) RunMachine(text);
  const double peer = interpreter::Seconds(text) * 1e3;
  if (peer < 0) {
    state.SetLabel("rs274 of linuxcnc-uspace does not run here");
    return;
  }
  const double milliseconds = MillisecondsOf([&] { RunMachine(text); });
  state.counters["ratio"] = milliseconds / peer;
  targets::Note({"Machine motion beside rs274, 100,000 lines", "ms", 0, 0, 0.1, "rs274"},
                milliseconds, peer);
}

// 100,000 turns of a loop with a move, a sum and a condition.
void MacroSteps(benchmark::State& state) {
  const std::u16string text =
      u"G0 X0. Y0. Z0.\nF10.\n#1=0\nWHILE [#1 LT 100000] DO1\n#1=#1+1\nG1 X[#1*.001]\nEND1\nM30\n";
  for (auto _ : state) RunMachine(text);
  const double milliseconds = MillisecondsOf([&] { RunMachine(text); });
  state.counters["points"] = morva::machinePath.count;
  targets::Note({"Machine motion, 100,000 steps of a macro", "ms", 0, 50}, milliseconds);
}

// A file of 1,000,000 lines opened, tagged, read by PATH and drawn; then its tab is closed.
double OpenMilliseconds(const std::u16string& path) {
  const double start = CpuMilliseconds();
  morva::OpenProgramFile(path);
  morva::RunTextRefresh();
  morva::RebuildToolpath();
  benchmark::DoNotOptimize(headless::PaintOf(morva::kViewToolpath));
  const double used = CpuMilliseconds() - start;
  morva::app.editorDirty = false;
  morva::CloseProgram();
  return used;
}

// The best of five, the switch on and off in turns.
void SwitchOnAgainstOff(benchmark::State& state) {
  Workbench bench;
  const std::filesystem::path file = bench.home / "LINES.NC";
  std::ofstream(file) << programs::Lines(1000000);
  const std::u16string path = Wide(file.string());
  double on = 1e9;
  double off = 1e9;
  for (auto _ : state) {
    for (int round = 0; round < 5; ++round) {
      morva::SwitchMachineMotion(false);
      off = std::min(off, OpenMilliseconds(path));
      morva::SwitchMachineMotion(true);
      on = std::min(on, OpenMilliseconds(path));
    }
  }
  morva::SwitchMachineMotion(false);
  state.counters["ratio"] = on / off;
  targets::Note({"Machine motion on, 1,000,000 lines", "ms", 0, 0, 1.3, "off"}, on, off);
}

BENCHMARK(StraightCode)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(StraightCodeBesideInterpreter)->Unit(benchmark::kMillisecond);
BENCHMARK(MacroSteps)->Unit(benchmark::kMillisecond);
BENCHMARK(SwitchOnAgainstOff)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
