// Plates: the picture of a full one, a drag in it, the largest code, and a named save on a slow
// disk.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cpu_time.h"
#include "documents/saver.h"
#include "forms/picture.h"
#include "library/shapes.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_code.h"
#include "plate/geometry/plate_layout.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/tools/plate_saving.h"
#include "platform/headless/headless.h"
#include "targets.h"
#include "text/code_writer.h"
#include "workbench.h"

namespace {

using namespace morva;

void MakeFullGrid() {
  ResetPlate();
  SetPlateName(u"Full");
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"20");
  SetPlateText(kPlateCountY, u"20");
}

void BM_PlatePicture(benchmark::State& state) {
  MakeFullGrid();
  // Each was set by the user, so that each bears its number.
  for (int k = 0; k < kMaxPlateFeatures; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  static Picture picture;
  const platform::Rect area{0, 0, 1200, 800};
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    DrawPlate(plate, {.selected = 7}, picture);
    const PictureView view = FitPicture(picture, area);
    benchmark::DoNotOptimize(PartAt(picture, view, 600, 400));
    targets::Note({"picture of a plate of 400 features, labels laid", "ms", 0, 4},
                  CpuMilliseconds() - start);
  }
  state.counters["labels"] = static_cast<double>(picture.labels.size());
}
BENCHMARK(BM_PlatePicture)->Unit(benchmark::kMillisecond);

void BM_PlateCode(benchmark::State& state) {
  MakeFullGrid();
  PlateFeature feature;
  feature.shape.count = kMaxShapeObjects;
  for (int i = 0; i < kMaxShapeObjects; ++i) {
    feature.shape.objects[i] = {kTypeLine, 0, i * 0.001, 0, 0.1, 0, i * 5.0};
  }
  for (int k = 0; k < kMaxPlateFeatures; ++k) PutFeature(k, feature);
  std::size_t units = 0;
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    CodeWriter out;
    out.most = PlateCodeRoom(plate);
    WritePlate(plate, out);
    targets::Note({"code of 400 plate features of 64 objects", "ms", 0, 50},
                  CpuMilliseconds() - start);
    units = out.text.size();
  }
  state.counters["units"] = static_cast<double>(units);
}
BENCHMARK(BM_PlateCode)->Unit(benchmark::kMillisecond);

void Point(platform::PointerAction action, int x, int y) {
  platform::PointerEvent event;
  event.action = action;
  const bool move = action == platform::PointerAction::Move;
  event.button = move ? platform::PointerButton::None : platform::PointerButton::Left;
  event.leftDown = move;
  event.x = x;
  event.y = y;
  headless::Pointer(kViewPlatePicture, event);
}

// One move of a feature's drag in the whole workspace, from the pointer to the picture laid anew.
// What it takes to bring that to the screen is the frame of a plate in the table.
void BM_PlateDrag(benchmark::State& state) {
  const Workbench workbench;
  headless::Click(kIdSurfacePlate);
  MakeFullGrid();
  constexpr int kDragged = 209;  // in the middle
  // Every second one bears its number; with all of them the numbers cover the holes.
  for (int k = 0; k < kMaxPlateFeatures; ++k) SetFeatureFlag(k, FeatureFlag::Hidden, k % 2 == 0);
  const platform::PointF at = LayoutPlace(NumbersOf(plate), kDragged);
  const platform::PointF pixel = OnView(PlateSight(), at.x, at.y);
  const int x = static_cast<int>(pixel.x);
  const int y = static_cast<int>(pixel.y);
  Point(platform::PointerAction::Press, x, y);
  Point(platform::PointerAction::Move, x + 9, y + 9);
  if (!PlateDragRuns()) std::abort();
  int step = 0;
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    Point(platform::PointerAction::Move, x + 10 + step % 40, y + 10 + step % 23);
    benchmark::DoNotOptimize(headless::PaintOf(kViewPlatePicture));
    targets::Note({"move of a dragged feature of 400", "ms", 0, 4}, CpuMilliseconds() - start);
    ++step;
  }
  if (!plate.features[kDragged].placed) std::abort();
  state.counters["labels"] = static_cast<double>(DrawnPlate().labels.size());
}
BENCHMARK(BM_PlateDrag)->Unit(benchmark::kMillisecond);

// How long the window waits for a named save.
void BM_NamedPlateSave(benchmark::State& state) {
  static Workbench workbench;
  ResetPlate();
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"8");
  SetPlateText(kPlateCountY, u"5");
  GivePlateName(u"Slow");
  headless::SetFlushTime(300);
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    if (SaveNamedPlate() != PlateSave::Done) std::abort();
    const std::chrono::duration<double, std::milli> passed =
        std::chrono::steady_clock::now() - start;
    targets::Note({"named save of a plate, window's wait", "ms", 0, 100}, passed.count());
    state.PauseTiming();
    WaitForSaves();
    state.ResumeTiming();
  }
  headless::SetFlushTime(0);
}
BENCHMARK(BM_NamedPlateSave)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
