// How fast program text becomes the point table, beside the least that any reader must do.
//
// The programs mix lines and arcs at about 27 characters a line, so the table fills early and
// the rest is interpreted without being stored. The baseline only looks at every character: it
// counts line ends, letters and digits.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "simulator/motion_path.h"

namespace {

std::uint32_t Next(std::uint32_t& state) {
  state = state * 1664525u + 1013904223u;
  return state >> 8;
}

// The value in units of the last decimal.
void AppendNumber(std::u16string& text, std::uint32_t value, unsigned decimals) {
  std::u16string reversed;
  for (unsigned i = 0; i <= decimals || value > 0; ++i) {
    if (i == decimals && decimals > 0) reversed += u'.';
    reversed += static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  }
  text.append(reversed.rbegin(), reversed.rend());
}

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

// The best of five, which disturbs a ratio least.
double SecondsOf(void (*work)(const std::u16string&), const std::u16string& text) {
  using Clock = std::chrono::steady_clock;
  double best = 1e9;
  for (int round = 0; round < 5; ++round) {
    const Clock::time_point start = Clock::now();
    work(text);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
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
  state.counters["ratio to count"] = SecondsOf(RunExtract, text) / SecondsOf(RunCount, text);
}

BENCHMARK(BM_CountOnly)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Extract)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
