// The scan of a long program, beside a loop that only walks its characters.
//
// The counter "walks" says how many such walks one scan costs: it holds from machine to
// machine where milliseconds do not. The scan runs several times an operation, so a program
// of 100,000 lines has to pass in at most 8 ms.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "documents/feature_blocks.h"

namespace {

constexpr int kLines = 100000;

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

// One line of a finishing pass, 13 units or so with its line end.
std::u16string CutLine(int i) {
  char line[64];
  std::snprintf(line, sizeof line, "G01 X%d.%03d\r\n", i % 97, i % 1000);
  return Wide(line);
}

std::u16string CutLines(int from, int to, int commentEvery) {
  std::u16string text;
  for (int i = from; i < to; ++i) {
    text += commentEvery > 0 && i % commentEvery == 0 ? u"(TOOL CHANGE POINT)\r\n" : CutLine(i);
  }
  return text;
}

std::u16string ForeignProgram() { return u"%\r\n" + CutLines(1, kLines, 0) + u"%\r\n"; }

// 100,000 lines in user blocks of one size.
std::u16string BlockProgram(int blocks, int commentEvery) {
  std::u16string text;
  const int each = kLines / blocks;
  for (int block = 0; block < blocks; ++block) {
    const std::u16string number = Wide(std::to_string(block + 1));
    text += u"(MORVA TEXT " + number + u")\r\n(MORVA NAME User code)\r\n";
    text += CutLines(block * each + 3, block * each + each, commentEvery);
    text += u"(MORVA END " + number + u")\r\n";
  }
  return text;
}

// Markers that open and never close: each is refused without a search of the rest.
std::u16string OpenMarkers() {
  std::u16string text;
  for (int i = 0; i < kLines; ++i) text += u"(MORVA TEXT 1)\r\n";
  return text + u"(MORVA END 2)\r\n";
}

unsigned Walk(const std::u16string& text) {
  unsigned lines = 0;
  for (const char16_t c : text) {
    lines += c == u'\n' ? 1u : 0u;
    benchmark::DoNotOptimize(lines);
  }
  return lines;
}

double SecondsOf(void (*work)(const std::u16string&), const std::u16string& text) {
  const auto from = std::chrono::steady_clock::now();
  work(text);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

// Scan and walk take turns, so that both meet the same machine.
void RunScan(benchmark::State& state, const std::u16string& text) {
  double scanned = 0;
  double walked = 0;
  for (auto step : state) {
    const double scan = SecondsOf([](const std::u16string& t) { morva::ScanProgramText(t); }, text);
    state.SetIterationTime(scan);
    scanned += scan;
    walked += SecondsOf([](const std::u16string& t) { Walk(t); }, text);
  }
  state.counters["walks"] = scanned / walked;
  state.counters["rows"] = morva::features.count;
  state.counters["units"] = static_cast<double>(text.size());
}

void ScanForeignProgram(benchmark::State& state) { RunScan(state, ForeignProgram()); }
void ScanOneBlock(benchmark::State& state) { RunScan(state, BlockProgram(1, 0)); }
void ScanManyBlocks(benchmark::State& state) { RunScan(state, BlockProgram(128, 0)); }
void ScanManyComments(benchmark::State& state) { RunScan(state, BlockProgram(128, 3)); }
void ScanOpenMarkers(benchmark::State& state) { RunScan(state, OpenMarkers()); }

void WalkCharacters(benchmark::State& state) {
  const std::u16string text = ForeignProgram();
  for (auto step : state) benchmark::DoNotOptimize(Walk(text));
}

void MapLastOffset(benchmark::State& state) {
  const std::u16string text = ForeignProgram();
  for (auto step : state) {
    benchmark::DoNotOptimize(morva::MapTextOffset(text, static_cast<std::int32_t>(text.size())));
  }
}

BENCHMARK(ScanForeignProgram)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ScanOneBlock)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ScanManyBlocks)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ScanManyComments)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(ScanOpenMarkers)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(WalkCharacters)->Unit(benchmark::kMillisecond);
BENCHMARK(MapLastOffset)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
