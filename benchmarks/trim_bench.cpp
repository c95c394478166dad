// What the sketch's geometry tools cost at 96 objects: the preview of a trim at one movement of
// the pointer, and the groups that are found anew after a tool.
//
// The groups stand beside a plain loop over all pairs of segments, which must give the same
// answer: circles that touch their neighbours, and circles within each other, whose boxes all
// overlap.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "cad/geometry/connectivity.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/geometry_tools.h"
#include "cpu_time.h"
#include "library/outline.h"
#include "sketch_scene.h"
#include "targets.h"

namespace {

using morva::sketch;
using scene::Put;

constexpr int kObjects = morva::kMaxItems;

std::uint32_t Next(std::uint32_t& state, std::uint32_t sides) {
  state = state * 1664525u + 1013904223u;
  return (state >> 8) % sides;
}

// The outlines of what is drawn, for the loops to compare with.
double outlineX[kObjects][morva::kOutlinePoints];
double outlineY[kObjects][morva::kOutlinePoints];
int outlineCount[kObjects];

void KeepOutlines() {
  for (int i = 0; i < sketch.objectCount; ++i) {
    outlineCount[i] = morva::ObjectOutline(sketch.objects[i], outlineX[i], outlineY[i]);
  }
}

enum Kind { kMixed, kSlots, kRectangles };
struct Scene {
  Kind kind;
  int count;
  bool shows;  // what a trim leaves of a slot needs up to 35 places
  const char* subject;
};
constexpr Scene kScenes[] = {
    {kMixed, kObjects - 35, true, "Trim preview, 61 objects, mixed"},
    {kMixed, kObjects, true, "Trim preview, 96 objects, mixed"},
    {kSlots, kObjects - 35, true, "Trim preview, 61 slots"},
    {kSlots, kObjects, false, "Trim preview that has no room, 96 slots"},
    {kRectangles, kObjects - 3, true, "Trim preview, 93 rectangles"},
};

// Everything crosses everything near the middle of the canvas.
void MakeScene(const Scene& made) {
  scene::Stand();
  std::uint32_t state = 2026;
  for (int i = 0; i < made.count; ++i) {
    const double x = Next(state, 100) * 0.01 - 0.5;
    const double y = Next(state, 100) * 0.01 - 0.5;
    const double angle = Next(state, 360);
    const int type = made.kind == kMixed ? i % 4 : made.kind == kSlots ? 3 : 1;
    const double second = type == morva::kTypeRectangle || type == morva::kTypeSlot ? 1 : 0;
    Put(type, x, y, type == morva::kTypeLine ? 2 : 3, second, angle);
  }
  morva::tools.geometryTool = morva::kGeometryTrim;
  KeepOutlines();
}

// The squared distance of the nearest corner of any outline.
double WalkOutlines(double x, double y) {
  double least = 1e9;
  for (int i = 0; i < sketch.objectCount; ++i) {
    for (int k = 0; k < outlineCount[i]; ++k) {
      const double dx = outlineX[i][k] - x;
      const double dy = outlineY[i][k] - y;
      least = std::min(least, dx * dx + dy * dy);
    }
  }
  return least;
}

void BM_TrimPreview(benchmark::State& state) {
  const Scene& made = kScenes[state.range(0)];
  MakeScene(made);
  std::uint32_t dice = 7;
  double spent = 0;
  double walked = 0;
  double worst = 0;
  int rounds = 0;
  int shown = 0;
  for (auto _ : state) {
    platform::PointerEvent event;
    event.x = 320 + static_cast<int>(Next(dice, 400));
    event.y = 100 + static_cast<int>(Next(dice, 400));
    const double before = CpuMilliseconds();
    morva::GeometryHover(event);
    const double after = CpuMilliseconds();
    benchmark::DoNotOptimize(WalkOutlines(event.x * 0.01 - 5.2, 3 - event.y * 0.01));
    walked += CpuMilliseconds() - after;
    spent += after - before;
    worst = std::max(worst, after - before);
    shown += morva::tools.previewSegmentCount > 0 ? 1 : 0;
    ++rounds;
  }
  state.SetLabel(made.subject);
  state.counters["worst_ms"] = worst;
  state.counters["shown"] = static_cast<double>(shown) / rounds;
  if (rounds > 1000 && (shown > 0) != made.shows) state.SkipWithError("not what it measures");
  targets::Note({made.subject, "ms", 0, 0.5, 0, "a walk along the outlines"}, spent / rounds,
                walked / rounds);
}

enum Circles { kTouching, kNested };

void MakeCircles(int kind) {
  morva::ResetSketch();
  for (int i = 0; i < kObjects; ++i) {
    if (kind == kTouching) {
      Put(morva::kTypeCircle, i % 12, i / 12, 1, 0, 0);
    } else {
      Put(morva::kTypeCircle, 0, 0, 1 + 0.05 * i, 0, 0);
    }
  }
}

bool Near(double ax, double ay, double bx, double by) {
  return std::fabs(ax - bx) + std::fabs(ay - by) <= 1e-5;
}

bool PlainTouch(int a, int b) {
  const double* ax = outlineX[a];
  const double* ay = outlineY[a];
  const double* bx = outlineX[b];
  const double* by = outlineY[b];
  for (int i = 0; i + 1 < outlineCount[a]; ++i) {
    for (int k = 0; k + 1 < outlineCount[b]; ++k) {
      if (Near(ax[i], ay[i], bx[k], by[k]) || Near(ax[i], ay[i], bx[k + 1], by[k + 1]) ||
          Near(ax[i + 1], ay[i + 1], bx[k], by[k]) ||
          Near(ax[i + 1], ay[i + 1], bx[k + 1], by[k + 1])) {
        return true;
      }
      double t = 0;
      double s = 0;
      if (morva::LineIntersection({ax[i], ay[i], ax[i + 1] - ax[i], ay[i + 1] - ay[i]},
                                  {bx[k], by[k], bx[k + 1] - bx[k], by[k + 1] - by[k]}, t, s) &&
          t >= -1e-6 && t <= 1.000001 && s >= -1e-6 && s <= 1.000001) {
        return true;
      }
    }
  }
  return false;
}

// Each object's part by its first member; -1 for one alone.
void PlainParts(int* parts) {
  KeepOutlines();
  std::fill_n(parts, kObjects, -2);
  for (int first = 0; first < kObjects; ++first) {
    if (parts[first] != -2) continue;
    int reached[kObjects] = {first};
    int count = 1;
    parts[first] = first;
    for (int next = 0; next < count; ++next) {
      for (int i = 0; i < kObjects; ++i) {
        if (parts[i] != -2 || !PlainTouch(reached[next], i)) continue;
        parts[i] = first;
        reached[count++] = i;
      }
    }
    if (count == 1) parts[first] = -1;
  }
}

void CheckSame(const int* parts) {
  for (int i = 0; i < kObjects; ++i) {
    for (int k = 0; k < kObjects; ++k) {
      const bool plain = parts[i] >= 0 && parts[i] == parts[k];
      const std::int32_t group = sketch.objects[i].group;
      if (plain != (group != 0 && group == sketch.objects[k].group)) std::abort();
    }
  }
}

void BM_Connectivity(benchmark::State& state) {
  const int kind = static_cast<int>(state.range(0));
  MakeCircles(kind);
  int parts[kObjects];
  const double start = CpuMilliseconds();
  PlainParts(parts);
  const double plain = CpuMilliseconds() - start;
  double best = 1e9;
  for (auto _ : state) {
    const double before = CpuMilliseconds();
    morva::RecomputeConnectivity();
    best = std::min(best, CpuMilliseconds() - before);
  }
  CheckSame(parts);
  state.counters["plain_ms"] = plain;
  state.SetLabel(kind == kTouching ? "touching" : "nested");
  targets::Note(
      {kind == kTouching ? "Connectivity, 96 touching circles" : "Connectivity, 96 nested circles",
       "ms", 0, 30, 0, "plain loop"},
      best, plain);
}

BENCHMARK(BM_TrimPreview)->DenseRange(0, 4)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Connectivity)->Arg(kTouching)->Arg(kNested)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
