// One frame of a toolpath view: 32,768 points at 1200 by 800, from request to screen, in smooth
// lines as the program draws cuts.
//
// Three paths: short steps as a pocket makes them, long strokes from rim to rim, and strokes that
// all cross the window, which is the worst there is. Times are the processor's, so that a busy
// machine changes them little.
#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "../cpu_time.h"
#include "../targets.h"
#include "bench_window.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace screen_frames {

constexpr int kView = 60;
constexpr int kPoints = 32768;
constexpr int kFrames = 200;

enum class Path : unsigned char { Steps, Strokes, Crossing };

inline platform::Events events;
inline std::vector<platform::Segment> path;
inline int painted = 0;

inline void Paint(int, platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), 0x021726);
  platform::PaintSegments(canvas, path.data(), static_cast<int>(path.size()),
                          platform::Pen{.colour = 0x48D3B8, .width = 2, .smooth = true});
  ++painted;
}

// A spiral of circles in short steps, or chords from rim to rim.
inline void MakeSpiral(bool longStrokes) {
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

inline void MakeCrossing() {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> across(0, 1200);
  std::uniform_real_distribution<float> down(0, 800);
  for (int i = 0; i < kPoints; ++i) {
    if (i % 2) {
      path.push_back({-10, down(random), 1210, down(random)});
    } else {
      path.push_back({across(random), -10, across(random), 810});
    }
  }
}

inline std::vector<double> Frames(benchmark::State& state, Path made) {
  events.paint = Paint;
  bench::StandView(kView, events, painted);
  path.clear();
  if (made == Path::Crossing) {
    MakeCrossing();
  } else {
    MakeSpiral(made == Path::Strokes);
  }
  std::vector<double> frames;
  const int before = painted;
  for (auto step : state) {
    const double start = CpuMilliseconds();
    platform::WidgetOf(kView)->repaint();
    frames.push_back(CpuMilliseconds() - start);
    state.SetIterationTime(frames.back() * 1e-3);
  }
  if (painted - before < kFrames) std::abort();
  std::sort(frames.begin(), frames.end());
  return frames;
}

inline void NoteMedian(benchmark::State& state, Path made, const targets::Goal& goal) {
  targets::Note(goal, targets::Median(Frames(state, made)));
}

inline void NoteSlowest(benchmark::State& state, Path made, const targets::Goal& goal) {
  const std::vector<double> frames = Frames(state, made);
  targets::Note(goal, frames[frames.size() * 99 / 100]);
}

}  // namespace screen_frames
