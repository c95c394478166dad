// One frame of the toolpath view: 32,768 points at 1200 by 800, from request to screen.
//
// Two paths: short steps as a pocket makes them, and long strokes across the whole view.
// Bounded at 4 ms a frame.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>
#include <vector>

#include "bench_window.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/window.h"

namespace {

constexpr int kView = 60;
constexpr int kPoints = 32768;
platform::Events events;
std::vector<platform::Segment> path;
int painted = 0;

void Paint(int, platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), 0x021726);
  platform::PaintSegments(canvas, path.data(), static_cast<int>(path.size()),
                          platform::Pen{.colour = 0x48D3B8, .width = 2, .smooth = true});
  ++painted;
}

void Stand() {
  events.paint = Paint;
  bench::StandView(kView, events, painted);
}

// A spiral of circles in short steps, or chords from rim to rim.
void MakePath(bool longStrokes) {
  path.clear();
  float x = 600;
  float y = 400;
  for (int i = 1; i < kPoints; ++i) {
    const double angle = longStrokes ? i * 2.4 : i * 0.05;
    const double radius = longStrokes ? 380 : 380.0 * i / kPoints;
    const float nextX = static_cast<float>(600 + 1.5 * radius * std::cos(angle));
    const float nextY = static_cast<float>(400 + radius * std::sin(angle));
    path.push_back({x, y, nextX, nextY});
    x = nextX;
    y = nextY;
  }
}

void Frame(benchmark::State& state) {
  Stand();
  MakePath(state.range(0) != 0);
  for (auto _ : state) {
    platform::Repaint(kView);
    QCoreApplication::processEvents();
  }
}

BENCHMARK(Frame)->ArgName("long")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
