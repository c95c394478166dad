// What the sketch's geometry tools cost at 96 objects: the preview of a trim at one movement of
// the pointer, and the groups that are found anew after a tool.
//
// The groups stand beside a plain loop over all pairs of segments, which must give the same
// answer: circles that touch their neighbours, and circles within each other, whose boxes all
// overlap.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "app/command_ids.h"
#include "cad/canvas.h"
#include "cad/geometry_tools.h"
#include "cad/outline.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "cpu_time.h"
#include "platform/headless/headless.h"
#include "platform/window.h"
#include "targets.h"

namespace {

using morva::sketch;
using morva::SketchObject;

constexpr int kObjects = morva::kMaxItems;

std::uint32_t Next(std::uint32_t& state, std::uint32_t sides) {
  state = state * 1664525u + 1013904223u;
  return (state >> 8) % sides;
}

void Put(std::int32_t type, double x, double y, double size, double size2, double angle) {
  SketchObject object;
  object.type = type;
  object.x = x;
  object.y = y;
  object.size = size;
  object.size2 = size2;
  object.angle = angle;
  morva::AppendSketchObject(object);
}

enum Scene { kMixed, kSlots, kRectangles };
const char* const kSceneNames[] = {"mixed", "slots", "rectangles"};

// Everything crosses everything near the middle of the canvas.
void MakeScene(int scene) {
  headless::Reset(u"");
  morva::ResetSketch();
  morva::ResetCanvas();
  platform::MainWindowSpec window;
  window.place = {0, 0, 1200, 800};
  platform::MakeMainWindow(window);
  platform::ViewSpec view;
  view.id = morva::kViewCadCanvas;
  view.className = u"MorvaCustomShapeCanvas";
  platform::MakeView(view);
  platform::SetPlace(morva::kViewCadCanvas, {0, 0, 1040, 600});
  std::uint32_t state = 2026;
  // A rectangle needs room for three more sides, or nothing is looked at.
  const int count = scene == kRectangles ? kObjects - 3 : kObjects;
  for (int i = 0; i < count; ++i) {
    const double x = Next(state, 100) * 0.01 - 0.5;
    const double y = Next(state, 100) * 0.01 - 0.5;
    const double angle = Next(state, 360);
    const int type = scene == kMixed ? i % 4 : scene == kSlots ? 3 : 1;
    const double second = type == morva::kTypeRectangle || type == morva::kTypeSlot ? 1 : 0;
    Put(type, x, y, type == morva::kTypeLine ? 2 : 3, second, angle);
  }
  morva::tools.geometryTool = morva::kGeometryTrim;
}

void BM_TrimPreview(benchmark::State& state) {
  const int scene = static_cast<int>(state.range(0));
  MakeScene(scene);
  std::uint32_t dice = 7;
  double worst = 0;
  int rounds = 0;
  int shown = 0;
  const double start = CpuMilliseconds();
  for (auto _ : state) {
    platform::PointerEvent event;
    event.x = 320 + static_cast<int>(Next(dice, 400));
    event.y = 100 + static_cast<int>(Next(dice, 400));
    const double before = CpuMilliseconds();
    morva::GeometryHover(event);
    worst = std::max(worst, CpuMilliseconds() - before);
    shown += morva::tools.previewSegmentCount > 0 ? 1 : 0;
    ++rounds;
  }
  const double figure = (CpuMilliseconds() - start) / rounds;
  state.SetLabel(kSceneNames[scene]);
  state.counters["worst_ms"] = worst;
  state.counters["shown"] = static_cast<double>(shown) / rounds;
  if (scene == kMixed) targets::Note({"Trim preview, 96 objects, mixed", "ms", 0, 0.5}, figure);
  if (scene == kSlots) targets::Note({"Trim preview, 96 slots", "ms", 0, 0.5}, figure);
  if (scene == kRectangles) targets::Note({"Trim preview, 93 rectangles", "ms", 0, 0.5}, figure);
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

double outlineX[kObjects][morva::kOutlinePoints];
double outlineY[kObjects][morva::kOutlinePoints];
int outlineCount[kObjects];

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
      if (morva::LineIntersection(ax[i], ay[i], ax[i + 1] - ax[i], ay[i + 1] - ay[i], bx[k], by[k],
                                  bx[k + 1] - bx[k], by[k + 1] - by[k], t, s) &&
          t >= -1e-6 && t <= 1.000001 && s >= -1e-6 && s <= 1.000001) {
        return true;
      }
    }
  }
  return false;
}

// Each object's part by its first member; -1 for one alone.
void PlainParts(int* parts) {
  for (int i = 0; i < kObjects; ++i) {
    outlineCount[i] = morva::ObjectOutline(sketch.objects[i], outlineX[i], outlineY[i]);
    parts[i] = -2;
  }
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

BENCHMARK(BM_TrimPreview)
    ->Arg(kMixed)
    ->Arg(kSlots)
    ->Arg(kRectangles)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Connectivity)->Arg(kTouching)->Arg(kNested)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
