// One snap search over 96 objects of one type, all of them near the pointer: what a move of the
// pointer costs beside painting.
//
// It stands beside a loop over all that could be snapped to, prepared beforehand: every point,
// edge and rim, and for lines and axes every pair's crossing.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "cad/geometry/snap.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "cpu_time.h"
#include "library/outline.h"
#include "sketch_scene.h"
#include "targets.h"

namespace {

using morva::sketch;

constexpr int kSearches = 500;
constexpr int kPlaces = 50;

struct Kind {
  morva::SketchType type;
  const char* subject;
};
constexpr Kind kKinds[] = {{morva::kTypeLine, "Snap search, 96 lines"},
                           {morva::kTypeWorkAxis, "Snap search, 96 work axes"},
                           {morva::kTypeSlot, "Snap search, 96 slots"},
                           {morva::kTypeCircle, "Snap search, 96 circles"},
                           {morva::kTypeRectangle, "Snap search, 96 rectangles"}};

struct Candidates {
  std::vector<double> xs, ys;            // points
  std::vector<double> ax, ay, bx, by;    // edges
  std::vector<double> cx, cy, r;         // rims
  std::vector<double> lx, ly, ldx, ldy;  // lines, whose pairs cross
};

Candidates All() {
  Candidates all;
  for (int i = 0; i < sketch.objectCount; ++i) {
    const morva::SketchObject& object = sketch.objects[i];
    double xs[9];
    double ys[9];
    const int count = morva::ObjectSnapPoints(object, xs, ys);
    all.xs.insert(all.xs.end(), xs, xs + count);
    all.ys.insert(all.ys.end(), ys, ys + count);
    const bool linear = object.type == morva::kTypeLine || object.type == morva::kTypeWorkAxis;
    const int sides = linear ? 1 : object.type == morva::kTypeRectangle ? 4 : 0;
    for (int k = 0; k < sides; ++k) {
      const int from = linear ? 0 : k + 1;
      const int to = linear ? 1 : (k + 1) % 4 + 1;
      all.ax.push_back(xs[from]);
      all.ay.push_back(ys[from]);
      all.bx.push_back(xs[to]);
      all.by.push_back(ys[to]);
    }
    if (linear) {
      all.lx.push_back(xs[0]);
      all.ly.push_back(ys[0]);
      all.ldx.push_back(xs[1] - xs[0]);
      all.ldy.push_back(ys[1] - ys[0]);
    }
    if (object.type == morva::kTypeCircle) {
      all.cx.push_back(object.x);
      all.cy.push_back(object.y);
      all.r.push_back(object.size / 2);
    }
  }
  return all;
}

double Square(double dx, double dy) { return dx * dx + dy * dy; }

// The squared distance of the nearest of them.
double Walk(const Candidates& all, double x, double y) {
  double least = 1e9;
  for (std::size_t i = 0; i < all.xs.size(); ++i) {
    least = std::min(least, Square(all.xs[i] - x, all.ys[i] - y));
  }
  for (std::size_t i = 0; i < all.ax.size(); ++i) {
    const morva::SegmentFoot foot =
        morva::FootOnSegment({x, y}, {all.ax[i], all.ay[i]}, {all.bx[i], all.by[i]}, 1e-6);
    least = std::min(least, foot.square);
  }
  for (std::size_t i = 0; i < all.cx.size(); ++i) {
    const double off = std::hypot(all.cx[i] - x, all.cy[i] - y) - all.r[i];
    least = std::min(least, off * off);
  }
  for (std::size_t i = 0; i < all.lx.size(); ++i) {
    for (std::size_t k = i + 1; k < all.lx.size(); ++k) {
      double t = 0;
      double s = 0;
      if (!morva::LineIntersection({all.lx[i], all.ly[i], all.ldx[i], all.ldy[i]},
                                   {all.lx[k], all.ly[k], all.ldx[k], all.ldy[k]}, t, s)) {
        continue;
      }
      least =
          std::min(least, Square(all.lx[i] + t * all.ldx[i] - x, all.ly[i] + t * all.ldy[i] - y));
    }
  }
  return least;
}

double PlaceX(int i) { return 0.5 + 0.003 * (i % kPlaces); }
constexpr double kPlaceY = 0.71;

void BM_SnapSearch(benchmark::State& state) {
  const Kind& kind = kKinds[state.range(0)];
  scene::Stand();
  morva::ResetDrawTools();
  for (int i = 0; i < morva::kMaxItems; ++i) {
    const bool boxed = kind.type == morva::kTypeSlot || kind.type == morva::kTypeRectangle;
    scene::Put(kind.type, 0.01 * i - 0.4, 0.3, 2, boxed ? 0.5 : 0, 3.7 * i);
  }
  sketch.snapOn = true;
  const Candidates all = All();
  int hits = 0;
  int searches = 0;
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    for (int i = 0; i < kSearches; ++i) {
      double x = PlaceX(i);
      double y = kPlaceY;
      morva::SnapPoint(x, y, -1, false);
      benchmark::DoNotOptimize(x);
      benchmark::DoNotOptimize(y);
      hits += morva::tools.snapHit ? 1 : 0;
    }
    const double search = (CpuMilliseconds() - start) * 1000 / kSearches;
    searches += kSearches;
    const double middle = CpuMilliseconds();
    for (int i = 0; i < kSearches; ++i) benchmark::DoNotOptimize(Walk(all, PlaceX(i), kPlaceY));
    const double walk = (CpuMilliseconds() - middle) * 1000 / kSearches;
    targets::Note({kind.subject, "us", 0, 100, 0, "all candidates plainly"}, search, walk);
  }
  state.counters["hits"] = static_cast<double>(hits) / searches;
  if (hits == 0) state.SkipWithError("nothing was found");
}
BENCHMARK(BM_SnapSearch)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
