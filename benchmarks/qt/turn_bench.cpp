// One frame of the toolpath view while the user turns it with the pointer, from the move to the
// picture at 1200 by 800: strokes from rim to rim, and full tables of the machine's motion.
//
// While it turns, a path that would take too long is drawn thin. Each frame stands beside the whole
// one of the same path, drawn when the pointer rests. Times are the processor's, so that a busy
// machine changes them little.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "simulator/control_reader.h"
#include "simulator/machine_path.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"

namespace {

constexpr int kFrames = 200;
constexpr int kRestMilliseconds = 400;
constexpr double kToTheRim = 1.3;  // the zoom at which the strokes end at the view's sides
platform::Events events;
int painted = 0;

void Paint(int, platform::Canvas& canvas) {
  morva::PaintToolpathView(canvas);
  ++painted;
}

void Tick(int view, int timer) {
  if (view == morva::kViewToolpath) morva::ViewTimer(timer);
}

// Chords of an ellipse, each beside the one before it, on levels one above the other.
void MakeStrokes(morva::MotionPath& out, int count) {
  for (int i = 0; i < count; ++i) {
    morva::MotionPoint& point = out.points[i];
    point = morva::MotionPoint();
    point.x = 6 * std::cos(i * 2.4);
    point.y = 4 * std::sin(i * 2.4);
    point.z = -0.5 * i / count;
  }
  out.count = count;
  ++out.generation;
}

void MakePockets() {
  const std::string program = programs::Pockets(morva::kMaxControlPoints + 100);
  morva::ReadMachineMotion(morva::machineTrack, std::u16string(program.begin(), program.end()), {});
  if (morva::machinePath.count != morva::kMaxControlPoints) std::abort();
}

void Point(platform::PointerAction action, int x, int y) {
  platform::PointerEvent event;
  event.action = action;
  event.button = platform::PointerButton::Left;
  event.leftDown = action != platform::PointerAction::Release;
  event.x = x;
  event.y = y;
  morva::ToolpathPointer(event);
}

double OneFrame() {
  const double before = CpuMilliseconds();
  platform::WidgetOf(morva::kViewToolpath)->repaint();
  return CpuMilliseconds() - before;
}

// What the view does by itself when nothing moves any more.
void Rest() {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < kRestMilliseconds) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
}

void Turned(benchmark::State& state, morva::PathOwner owner, void (*make)(), double zoom,
            const targets::Goal& slowest) {
  events.paint = Paint;
  events.timer = Tick;
  bench::StandView(morva::kViewToolpath, events, painted);
  morva::ResetSimulator();
  make();
  morva::SetShownOwner(owner);
  morva::SetViewIsometric();
  morva::ZoomBy(zoom);
  Rest();
  std::vector<double> whole;
  for (int i = 0; i < 5; ++i) whole.push_back(OneFrame());
  std::vector<double> frames;
  Point(platform::PointerAction::Press, 300, 400);
  int x = 300;
  for (auto step : state) {
    x += 3;
    const double before = CpuMilliseconds();
    Point(platform::PointerAction::Move, x, 400 + x / 3 % 2);
    const double spent = CpuMilliseconds() - before + OneFrame();
    frames.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  Point(platform::PointerAction::Release, x, 400);
  std::sort(frames.begin(), frames.end());
  state.counters["p99_ms"] = frames[frames.size() * 99 / 100];
  targets::Note(slowest, frames[frames.size() * 99 / 100], targets::Median(whole));
  morva::ResetSimulator();
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK_CAPTURE(Turned, strokes, morva::PathOwner::Program,
                  [] { MakeStrokes(morva::path, morva::kMaxMotionPoints); }, kToTheRim,
                  {"Turning 32,768 strokes, 99th percentile", "ms", 0, 16.6, 0, "whole, still"})
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(kFrames);
BENCHMARK_CAPTURE(Turned, machine, morva::PathOwner::Machine, MakePockets, 1,
                  {"Turning 262,144 points of pockets", "ms", 0, 16.6, 0, "whole, still"})
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(kFrames);
BENCHMARK_CAPTURE(Turned, machine_strokes, morva::PathOwner::Machine,
                  [] { MakeStrokes(morva::machinePath, morva::kMaxControlPoints); }, kToTheRim,
                  {"Turning 262,144 strokes", "ms", 0, 16.6, 0, "whole, still"})
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(kFrames);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
