// How fast program text becomes the point table, beside the least that any reader must do.
//
// The programs mix lines and arcs at about 27 characters a line, so the table fills early and
// the rest is interpreted without being stored. The baseline only looks at every character: it
// counts line ends, letters and digits. Where Debian's linuxcnc-uspace is installed its
// interpreter reads a program of as many lines and arcs too, in processor time on both sides.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "cpu_time.h"
#include "interpreter.h"
#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "targets.h"

namespace {

using interpreter::AppendNumber;
using interpreter::Next;

void AppendWord(std::u16string& text, char16_t letter, std::uint32_t& state) {
  text += u' ';
  text += letter;
  if (Next(state) % 2) text += u'-';
  AppendNumber(text, Next(state) % 40000, 3);
}

// Three lines in four are feeds; the fourth is an arc, in turn a half circle whose centre
// fits and one with random words.
std::u16string MixedProgram(int lines) {
  std::u16string text = u"%\r\nO01000\r\nG20 G90 G17\r\nG00 X0 Y0\r\n";
  std::uint32_t state = 2026;
  for (int i = 0; i < lines - 5; ++i) {
    text += u'N';
    AppendNumber(text, static_cast<std::uint32_t>(i) * 10 % 100000, 0);
    if (i % 8 == 3) {
      text += u" G91 G2 X1. Y0 I.5 J0 G90";
    } else if (i % 8 == 7) {
      text += u" G3";
      AppendWord(text, u'X', state);
      AppendWord(text, u'I', state);
      AppendWord(text, u'J', state);
    } else {
      text += u" G1";
      AppendWord(text, u'X', state);
      AppendWord(text, u'Y', state);
    }
    text += u"\r\n";
  }
  text += u"M30\r\n";
  return text;
}

struct Tally {
  std::int64_t lines = 0;
  std::int64_t letters = 0;
  std::int64_t digits = 0;
};

Tally CountOnly(const std::u16string& text) {
  Tally tally;
  for (const char16_t c : text) {
    if (c == 0) break;
    if (c == u'\n') {
      ++tally.lines;
    } else if (static_cast<unsigned>((c | 32) - u'a') < 26u) {
      ++tally.letters;
    } else if (static_cast<unsigned>(c - u'0') < 10u) {
      ++tally.digits;
    }
  }
  return tally;
}

void RunCount(const std::u16string& text) {
  Tally tally = CountOnly(text);
  benchmark::DoNotOptimize(tally);
}

void RunExtract(const std::u16string& text) {
  morva::ExtractToolpath(text, false);
  benchmark::DoNotOptimize(morva::path.count);
}

// The best of five in processor time, which disturbs a ratio least.
double SecondsOf(void (*work)(const std::u16string&), const std::u16string& text) {
  double best = 1e9;
  for (int round = 0; round < 5; ++round) {
    const double start = CpuMilliseconds();
    work(text);
    const double seconds = (CpuMilliseconds() - start) * 1e-3;
    if (seconds < best) best = seconds;
  }
  return best;
}

void Figures(benchmark::State& state, const std::u16string& text, int lines) {
  state.counters["lines/s"] =
      benchmark::Counter(static_cast<double>(lines), benchmark::Counter::kIsIterationInvariantRate);
  state.counters["units/line"] = static_cast<double>(text.size()) / lines;
}

void BM_CountOnly(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  const std::u16string text = MixedProgram(lines);
  for (auto _ : state) RunCount(text);
  Figures(state, text, lines);
}

void BM_Extract(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  const std::u16string text = MixedProgram(lines);
  for (auto _ : state) RunExtract(text);
  Figures(state, text, lines);
  state.counters["points"] = morva::path.count;
  const double seconds = SecondsOf(RunExtract, text);
  const double least = SecondsOf(RunCount, text);
  state.counters["ratio to count"] = seconds / least;
  targets::Note({lines == 1000000 ? "Extraction, 1,000,000 lines" : "Extraction, 100,000 lines",
                 "Mlines/s", 10, 0, 0, "counting loop"},
                lines * 1e-6 / seconds, lines * 1e-6 / least);
}

void BM_ExtractBesideInterpreter(benchmark::State& state) {
  constexpr int kLines = 100000;
  const std::u16string text = interpreter::StrictProgram(kLines);
  const double peer = interpreter::Seconds(text);
  for (auto _ : state) RunExtract(text);
  if (peer < 0) {
    state.SetLabel("rs274 of linuxcnc-uspace does not run here");
    return;
  }
  const double seconds = SecondsOf(RunExtract, text);
  state.counters["interpreter_ms"] = peer * 1e3;
  state.counters["ratio"] = seconds / peer;
  targets::Note({"Extraction beside rs274, 100,000 lines", "ms", 0, 0, 0.1, "rs274"}, seconds * 1e3,
                peer * 1e3);
}

BENCHMARK(BM_ExtractBesideInterpreter)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CountOnly)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Extract)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
