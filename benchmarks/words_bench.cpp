// A long program to words and back, beside a loop that only walks its characters.
//
// The counter "walks" says how many walks of the text read one conversion costs: it holds from
// machine to machine where milliseconds do not. The words view converts the whole text when it
// comes up: 100,000 lines have to pass in at most 60 ms to words, 120 ms back.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "codetools/command_words.h"

namespace {

constexpr int kLines = 100000;

using Maker = std::u16string (*)(int line);

std::u16string Wide(const char* text) {
  std::u16string wide;
  for (; *text; ++text) wide += static_cast<char16_t>(*text);
  return wide;
}

// A finishing pass: one word a line.
std::u16string CutLine(int i) {
  char line[64];
  std::snprintf(line, sizeof line, "G01 X%d.%03d\r\n", i % 97, i % 1000);
  return Wide(line);
}

// As control rooms write it: numbered lines, glued words.
std::u16string DenseLine(int i) {
  char line[96];
  std::snprintf(line, sizeof line, "N%dG90G54G0X%d.%03dY#%dM8\r\n", i, i % 97, i % 1000, i % 33);
  return Wide(line);
}

// Work offsets above the sixth: a long beginning that twenty words share.
std::u16string OffsetLine(int i) {
  char line[64];
  std::snprintf(line, sizeof line, "G%d\r\n", 110 + i % 20);
  return Wide(line);
}

std::u16string CommentLine(int) { return u"(A LINE OF A LONG COMMENT G01 X1.)\r\n"; }

std::u16string Program(Maker line) {
  std::u16string text = u"%\r\nO1000\r\n";
  for (int i = 2; i < kLines; ++i) text += line(i);
  return text;
}

unsigned Walk(std::u16string_view text) {
  unsigned lines = 0;
  for (const char16_t c : text) {
    lines += c == u'\n' ? 1u : 0u;
    benchmark::DoNotOptimize(lines);
  }
  return lines;
}

template <typename Work>
double SecondsOf(Work work) {
  const auto from = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

// Conversion and walk take turns, so that both meet the same machine.
void Run(benchmark::State& state, morva::OwnedText (*convert)(std::u16string_view),
         std::u16string_view text) {
  double converted = 0;
  double walked = 0;
  std::size_t units = 0;
  for (auto step : state) {
    const double seconds = SecondsOf([&] { units = convert(text).length; });
    state.SetIterationTime(seconds);
    converted += seconds;
    walked += SecondsOf([&] { Walk(text); });
  }
  state.counters["walks"] = converted / walked;
  state.counters["from"] = static_cast<double>(text.size());
  state.counters["to"] = static_cast<double>(units);
}

void ToWords(benchmark::State& state, Maker line) {
  const std::u16string code = Program(line);
  Run(state, morva::CodeToWords, code);
}

void ToCode(benchmark::State& state, Maker line) {
  const morva::OwnedText words = morva::CodeToWords(Program(line));
  Run(state, morva::WordsToCode, words.View());
}

BENCHMARK_CAPTURE(ToWords, cut, CutLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToWords, dense, DenseLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToWords, offsets, OffsetLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToWords, comments, CommentLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToCode, cut, CutLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToCode, dense, DenseLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToCode, offsets, OffsetLine)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(ToCode, comments, CommentLine)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
