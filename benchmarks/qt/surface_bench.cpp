// The cut surface while a program of 32,768 points plays at 64x in a view of 1200 by 800: one
// frame from tick to picture, with surface, tool and path; and the whole grid stamped anew.
//
// Pockets cleared in spirals of short chords, level by level, by a flat cutter of half an inch
// over stock of 6 by 3. The frames are the last thousand, where the most path is drawn. A frame
// stands beside the same frame without the layer, the stamping beside a bare walk over the points.
// Times are the processor's, so that a busy machine changes them little.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "library/tools.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "simulator/cut_surface.h"
#include "simulator/extract.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"

namespace {

constexpr int kCount = morva::kMaxMotionPoints;
constexpr int kFrames = 1000;
platform::Events events;
int painted = 0;

void Paint(int, platform::Canvas& canvas) {
  morva::PaintToolpathView(canvas);
  ++painted;
}

void MakeProgram() {
  morva::ResetSimulator();
  morva::ResetToolLibrary();
  morva::ToolRecord tool;
  tool.number = 1;
  tool.diameter = 0.5;
  tool.stickout = 1;
  tool.gaugeLength = 2;
  morva::AppendTool(tool);
  const std::string program = "T1\r\n" + programs::Pockets(kCount);
  morva::ExtractInto(morva::path, std::u16string(program.begin(), program.end()), {});
  if (morva::path.count < kCount * 9 / 10) std::abort();
  ++morva::path.generation;
  morva::SetStockOf(morva::PathOwner::Program, {true, -0.75, 5.25, -0.75, 2.25, 0, -0.5, 0.5});
  morva::SetViewIsometric();
}

void Stand() {
  events.paint = Paint;
  bench::StandView(morva::kViewToolpath, events, painted);
  MakeProgram();
}

double OneFrame(bool withTick) {
  const double before = CpuMilliseconds();
  if (withTick) morva::PlayTick();
  platform::WidgetOf(morva::kViewToolpath)->repaint();
  return CpuMilliseconds() - before;
}

// The program plays, but no timer: each frame is a tick by hand.
void PlayingFrame(benchmark::State& state) {
  Stand();
  morva::LoopFromStart(morva::kSpeedCount - 1);
  morva::playback.loops = false;  // an example would be drawn in another way
  morva::playback.playHead = morva::path.count - static_cast<int>(kFrames * 4.27) - 8;
  OneFrame(true);  // stamps all that lies before
  std::vector<double> frames;
  std::vector<double> bare;
  for (auto step : state) {
    morva::switches.showCutSurface = true;
    const double spent = OneFrame(true);
    if (!morva::CutSurfaceNow() || !morva::playback.playing) std::abort();
    morva::switches.showCutSurface = false;
    bare.push_back(OneFrame(false));
    frames.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  morva::switches.showCutSurface = true;
  std::vector<double> sorted = frames;
  std::sort(sorted.begin(), sorted.end());
  const double slow = sorted[sorted.size() * 99 / 100];
  state.counters["p99_ms"] = slow;
  targets::Note({"Frame at 64x with the cut surface", "ms", 0, 4, 0, "without the layer"},
                targets::Median(frames), targets::Median(bare));
  targets::Note({"The same, 99th percentile", "ms", 0, 16.6, 0, ""}, slow);
  morva::StopPlayback();
}

double WalkPoints() {
  const double before = CpuMilliseconds();
  double sum = 0;
  for (int i = 0; i < morva::path.count; ++i) {
    const morva::MotionPoint& point = morva::path.points[i];
    sum += point.x + point.y + point.z;
  }
  benchmark::DoNotOptimize(sum);
  return CpuMilliseconds() - before;
}

// With a ramp no cut is ever as deep as the next one, which is the most work there is.
void Restamp(benchmark::State& state, const char* subject, bool ramp) {
  Stand();
  if (ramp) {
    const int count = morva::path.count;
    for (int i = 0; i < count; ++i) morva::path.points[i].z = -0.4 * i / count;
  }
  std::vector<double> times;
  std::vector<double> walks;
  for (auto step : state) {
    ++morva::path.generation;
    const double before = CpuMilliseconds();
    benchmark::DoNotOptimize(morva::CutSurfaceNow());
    times.push_back(CpuMilliseconds() - before);
    walks.push_back(WalkPoints());
    state.SetIterationTime(times.back() * 1e-3);
  }
  targets::Note({subject, "ms", 0, 30, 0, "a walk over the points"}, targets::Median(times),
                targets::Median(walks));
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK(PlayingFrame)->Unit(kMs)->UseManualTime()->Iterations(kFrames);
BENCHMARK_CAPTURE(Restamp, pockets, "Cut surface of 32,768 points, anew", false)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(50);
BENCHMARK_CAPTURE(Restamp, ramp, "The same of a ramp", true)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(50);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
