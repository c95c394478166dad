// Plates: the picture of a full one, the largest code, and a named save on a slow disk.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "app/app_state.h"
#include "cpu_time.h"
#include "documents/saver.h"
#include "library/shapes.h"
#include "plate/geometry/plate_code.h"
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
