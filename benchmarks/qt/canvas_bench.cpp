// The CAD canvas with a full sketch: one frame at 1200 by 800 from request to screen, and one
// move of the pointer with snap search, trim preview and cursor text. The trim has the room that
// its remainder needs.
//
// 96 circles and slots with grid, labels and the handles of a selected slot. The frame stands
// beside a bare one that draws the same outlines and nothing else, the move beside a walk along
// every edge. Times are the processor's, so that a busy machine changes them little.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "../cpu_time.h"
#include "../targets.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "cad/canvas/canvas.h"
#include "cad/canvas/canvas_paint.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/geometry_tools.h"
#include "library/outline.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace {

platform::Events events;
std::vector<platform::Segment> outlines;

void MakeSketch(int objects) {
  morva::ResetSketch();
  morva::ResetCanvas();
  for (int i = 0; i < objects; ++i) {
    morva::SketchObject object;
    object.type = i % 2 ? morva::kTypeSlot : morva::kTypeCircle;
    object.x = i % 12 * 0.75 - 4.1;
    object.y = i / 12 * 0.72 - 2.5;
    object.size = 0.8;  // neighbours cross, so that a trim finds sections
    object.size2 = i % 2 ? 0.3 : 0;
    object.angle = i % 2 ? i * 7.0 : 0;
    morva::AppendSketchObject(object);
  }
  morva::sketch.selected = 49;
}

void KeepOutlines() {
  outlines.clear();
  for (int i = 0; i < morva::sketch.objectCount; ++i) {
    double xs[morva::kOutlinePoints];
    double ys[morva::kOutlinePoints];
    const int count = morva::ObjectOutline(morva::sketch.objects[i], xs, ys);
    for (int k = 0; k + 1 < count; ++k) {
      const platform::Point from = morva::ToCanvas(xs[k], ys[k]);
      const platform::Point to = morva::ToCanvas(xs[k + 1], ys[k + 1]);
      outlines.push_back({static_cast<float>(from.x), static_cast<float>(from.y),
                          static_cast<float>(to.x), static_cast<float>(to.y)});
    }
  }
}

void PaintBare(int, platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), 0x010F19);
  platform::PaintSegments(canvas, outlines.data(), static_cast<int>(outlines.size()),
                          platform::Pen{0x86AAC6});
}

// As a wireframe shows them, below and above.
void PaintBareTwice(int view, platform::Canvas& canvas) {
  PaintBare(view, canvas);
  platform::PaintSegments(canvas, outlines.data(), static_cast<int>(outlines.size()),
                          platform::Pen{0x86AAC6});
}

int painted = 0;

void PaintSketchOf(int view, platform::Canvas& canvas) {
  morva::PaintCanvas(canvas);
  painted += view == morva::kViewCadCanvas ? 1 : 0;
}

void Stand(int objects) {
  events.paint = PaintSketchOf;
  bench::StandView(morva::kViewCadCanvas, events, painted);
  MakeSketch(objects);
  KeepOutlines();
}

double OneFrame(void (*paint)(int, platform::Canvas&)) {
  events.paint = paint;
  const double before = CpuMilliseconds();
  platform::WidgetOf(morva::kViewCadCanvas)->repaint();
  return CpuMilliseconds() - before;
}

void SketchFrame(benchmark::State& state) {
  Stand(morva::kMaxItems);
  morva::tools.dimensionMode = true;  // or there are no labels
  std::vector<double> frames;
  std::vector<double> bare;
  for (auto step : state) {
    bare.push_back(OneFrame(PaintBare));
    const double spent = OneFrame(PaintSketchOf);
    frames.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  if (painted < 100) std::abort();
  targets::Note({"Frame of a sketch of 96 circles and slots", "ms", 0, 4, 2, "outlines alone"},
                targets::Median(frames), targets::Median(bare));
}

// The frame while the sketch is turned as a wireframe, every object selected.
void ModelFrame(benchmark::State& state) {
  Stand(morva::kMaxItems);
  morva::canvasView.modelView = true;
  for (unsigned char& mark : morva::tools.multiSelect) mark = 1;
  std::vector<double> frames;
  std::vector<double> bare;
  for (auto step : state) {
    bare.push_back(OneFrame(PaintBareTwice));
    morva::canvasView.modelYaw += 0.55;
    morva::canvasView.modelPitch = 28;
    const double spent = OneFrame(PaintSketchOf);
    frames.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  morva::canvasView.modelView = false;
  targets::Note({"Frame of its wireframe", "ms", 0, 4, 0, "outlines twice"},
                targets::Median(frames), targets::Median(bare));
}

double WalkEdges(double x, double y) {
  const double before = CpuMilliseconds();
  double least = 1e9;
  for (const platform::Segment& s : outlines) {
    const double dx = static_cast<double>(s.x0) - x;
    const double dy = static_cast<double>(s.y0) - y;
    const double square = dx * dx + dy * dy;
    if (square < least) least = square;
  }
  benchmark::DoNotOptimize(least);
  return CpuMilliseconds() - before;
}

void PointerMove(benchmark::State& state, bool trims) {
  // What a trim leaves of a circle or slot needs up to 36 places.
  Stand(trims ? morva::kMaxItems - 36 : morva::kMaxItems);
  if (trims) {
    morva::StartGeometryTool(morva::kGeometryTrim);
  } else {
    morva::StartMethod(morva::kIdMethodLine);
  }
  std::vector<double> moves;
  std::vector<double> walks;
  int n = 0;
  int previews = 0;
  for (auto step : state) {
    n = (n + 1) % 5000;
    platform::PointerEvent event;
    event.action = platform::PointerAction::Move;
    // Along the outlines, where there is the most to find.
    const platform::Segment& s = outlines[static_cast<std::size_t>(n * 37) % outlines.size()];
    event.x = static_cast<int>(s.x0) + n % 3;
    event.y = static_cast<int>(s.y0) - n % 5;
    const double before = CpuMilliseconds();
    morva::CanvasPointer(event);
    const double spent = CpuMilliseconds() - before;
    previews += morva::tools.previewSegmentCount > 0 ? 1 : 0;
    moves.push_back(spent);
    walks.push_back(WalkEdges(event.x, event.y));
    state.SetIterationTime(spent * 1e-3);
  }
  if (morva::SketchStatus().empty() || (trims && previews < 250)) std::abort();
  std::vector<double> sorted = moves;
  std::sort(sorted.begin(), sorted.end());
  state.counters["p99_ms"] = sorted[sorted.size() * 99 / 100];
  state.counters["previews"] = previews;
  const char* subject =
      trims ? "Pointer move over it with Trim" : "Pointer move over it with a line";
  targets::Note({subject, "ms", 0, 1, 0, "a walk along the edges"}, targets::Median(moves),
                targets::Median(walks));
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK(SketchFrame)->Unit(kMs)->UseManualTime()->Iterations(100);
BENCHMARK(ModelFrame)->Unit(kMs)->UseManualTime()->Iterations(100);
BENCHMARK_CAPTURE(PointerMove, trim, true)->Unit(kMs)->UseManualTime()->Iterations(500);
BENCHMARK_CAPTURE(PointerMove, line, false)->Unit(kMs)->UseManualTime()->Iterations(500);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
