// Two programs line by line: the exact method at its largest and the lookahead at its largest.
//
// Beside the exact method stands the plain table that says what it must answer: one 32-bit
// cell for each pair of lines, filled by comparing texts. Where a `diff` is installed its
// thorough mode runs on the same two files as a process. 1,999 lines against 1,999 have to pass
// in at most 3 ms, 32,768 against 32,768 in at most 10 ms.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "codetools/compare.h"
#include "cpu_time.h"
#include "targets.h"

namespace {

// How many lines of a hundred differ.
struct Kind {
  const char* name;
  int changed;
  bool moved;  // some are left out or put in
};
constexpr Kind kTouched = {"touched", 1, false};
constexpr Kind kEdited = {"edited", 5, true};
constexpr Kind kStrange = {"strange", 100, false};

std::uint32_t Scatter(std::uint32_t n) {
  n = (n ^ (n >> 16)) * 0x45D9F3Bu;
  n = (n ^ (n >> 16)) * 0x45D9F3Bu;
  return n ^ (n >> 16);
}

// A finishing pass. On the right side some lines bear another feed, and now and then one is
// left out and another is put in elsewhere, so that the sides run out of step.
std::string Program(int lines, const Kind& kind, bool right) {
  std::string text;
  for (int i = 0; i < lines; ++i) {
    char line[80];
    const std::uint32_t dice = Scatter(static_cast<std::uint32_t>(i));
    const bool other = right && static_cast<int>(dice % 100) < kind.changed;
    std::snprintf(line, sizeof line, "G01 X%u.%04u Y%u.%04u F%d.\r\n", dice % 31, dice % 9999,
                  (dice >> 8) % 17, (dice >> 4) % 9999, other ? 25 : 20);
    const bool moved = right && kind.moved && dice % 97 == 0;
    if (moved) text += "M08\r\n";
    if (!moved || i % 2 == 0) text += line;
  }
  return text;
}

// Exactly `lines` lines of it.
std::string Cut(const std::string& text, int lines) {
  std::size_t at = 0;
  for (int i = 0; i < lines; ++i) {
    const std::size_t end = text.find('\n', at);
    if (end == std::string::npos) return text;
    at = end + 1;
  }
  return text.substr(0, at);
}

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

std::vector<std::u16string_view> LinesOf(std::u16string_view text) {
  std::vector<std::u16string_view> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find(u'\r', at);
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

// The longest common subsequence by the table itself; how many rows are the same.
std::int32_t PlainTable(std::u16string_view left, std::u16string_view right) {
  const auto a = LinesOf(left);
  const auto b = LinesOf(right);
  const std::size_t width = b.size() + 1;
  std::vector<std::int32_t> cells((a.size() + 1) * width, 0);
  for (std::size_t i = a.size(); i-- > 0;) {
    for (std::size_t j = b.size(); j-- > 0;) {
      const std::int32_t down = cells[(i + 1) * width + j];
      const std::int32_t across = cells[i * width + j + 1];
      cells[i * width + j] =
          a[i] == b[j] ? cells[(i + 1) * width + j + 1] + 1 : (down > across ? down : across);
    }
  }
  return cells[0];
}

std::int32_t SameRows() {
  std::int32_t same = 0;
  for (std::int32_t i = 0; i < morva::compareResult.rowCount; ++i) {
    same += morva::compareResult.rows[i].type == morva::kRowSame ? 1 : 0;
  }
  return same;
}

// Processor time, so that a busy machine does not count; of ended children for the process.
template <typename Work>
double MillisecondsOf(Work work) {
  const double from = CpuMilliseconds();
  work();
  return CpuMilliseconds() - from;
}

double ChildMilliseconds() {
  rusage used;
  getrusage(RUSAGE_CHILDREN, &used);
  const auto of = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
  };
  return of(used.ru_utime) + of(used.ru_stime);
}

// The two programs as files in a folder of their own.
struct Pair {
  std::filesystem::path folder;
  Pair(const std::string& left, const std::string& right) {
    folder = std::filesystem::temp_directory_path() / ("morva-compare-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "left", std::ios::binary) << left;
    std::ofstream(folder / "right", std::ios::binary) << right;
  }
  ~Pair() { std::filesystem::remove_all(folder); }
  // Milliseconds of the process, 0 where there is none: 0 and 1 are its answers, more is a failure.
  double Diff() const {
    const std::string line = "diff -d '" + (folder / "left").string() + "' '" +
                             (folder / "right").string() + "' >/dev/null 2>&1";
    const double from = ChildMilliseconds();
    const int status = std::system(line.c_str());
    return status == 0 || status == 256 ? ChildMilliseconds() - from : 0;
  }
};

void Compare(benchmark::State& state, const Kind& kind, int lines, const targets::Goal& goal,
             bool table) {
  const std::string leftBytes = Cut(Program(lines, kind, false), lines);
  const std::string rightBytes = Cut(Program(lines + lines / 50, kind, true), lines);
  const std::u16string left = Wide(leftBytes);
  const std::u16string right = Wide(rightBytes);
  const Pair files(leftBytes, rightBytes);
  const morva::CompareOptions options;
  double ours = 0;
  double plain = 0;
  double diff = 0;
  int diffs = 0;
  std::int32_t same = 0;
  for (auto step : state) {
    const double spent = MillisecondsOf([&] { morva::CompareTexts(left, right, options); });
    state.SetIterationTime(spent / 1e3);
    ours += spent;
    if (table) plain += MillisecondsOf([&] { same = PlainTable(left, right); });
    // Two seconds where all lines differ: once is enough.
    if (diffs == 0 || kind.changed < 100) {
      diff += files.Diff();
      ++diffs;
    }
  }
  if (morva::compareResult.left.count != lines || morva::compareResult.right.count != lines) {
    state.SkipWithError("not as many lines as were to be compared");
  }
  if (morva::compareResult.largeFile == table) state.SkipWithError("the other method ran");
  if (table && same != SameRows()) state.SkipWithError("the table found another length");
  const auto times = static_cast<double>(state.iterations());
  if (table) state.counters["table_ms"] = plain / times;
  if (diff > 0) state.counters["diff_ms"] = diff / diffs;
  state.counters["rows"] = static_cast<double>(morva::compareResult.rowCount);
  targets::Note(goal, ours / times, table ? plain / times : diff / diffs);
}

constexpr targets::Goal kExactEdited = {
    "Compare 1,999 x 1,999 lines, edited", "ms", 0, 3, 0, "plain table"};
constexpr targets::Goal kExactStrange = {
    "Compare 1,999 x 1,999 lines, all differ", "ms", 0, 3, 0, "plain table"};
constexpr targets::Goal kLargeTouched = {
    "Compare 32,768 x 32,768 lines, 1 % edited", "ms", 0, 0, 0.35, "diff -d"};
constexpr targets::Goal kLargeEdited = {
    "Compare 32,768 x 32,768 lines, 6 % edited", "ms", 0, 10, 0, "diff -d"};
constexpr targets::Goal kLargeStrange = {
    "Compare 32,768 x 32,768 lines, all differ", "ms", 0, 10, 0, "diff -d"};

void ExactEdited(benchmark::State& state) { Compare(state, kEdited, 1999, kExactEdited, true); }
void ExactStrange(benchmark::State& state) { Compare(state, kStrange, 1999, kExactStrange, true); }
void LargeTouched(benchmark::State& state) {
  Compare(state, kTouched, 32768, kLargeTouched, false);
}
void LargeEdited(benchmark::State& state) { Compare(state, kEdited, 32768, kLargeEdited, false); }
void LargeStrange(benchmark::State& state) {
  Compare(state, kStrange, 32768, kLargeStrange, false);
}

BENCHMARK(ExactEdited)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);
BENCHMARK(ExactStrange)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);
BENCHMARK(LargeTouched)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);
BENCHMARK(LargeEdited)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);
BENCHMARK(LargeStrange)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
