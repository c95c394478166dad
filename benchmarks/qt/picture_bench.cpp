// A builder's picture at its fullest: 400 features of 64 segments with a label each, one frame at
// 1200 by 800 from request to screen.
//
// The frame stands beside a bare one that draws the same outlines and nothing else. The first
// kind paints a picture that did not change, as while the pointer moves over it; the second one
// that is made anew before each frame, as while its fields are typed. Times are the processor's,
// so that a busy machine changes them little.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../targets.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "forms/picture.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace {

constexpr platform::Rect kArea{0, 0, 1200, 800};
constexpr int kAcross = 20;
constexpr int kFeatures = 400;
constexpr int kCorners = 64;

platform::Events events;
morva::Picture picture;
morva::PictureView view;
std::vector<platform::Segment> outlines;

struct Ring {
  morva::PicturePoint corners[kCorners];
  double x = 0;
  double y = 0;
  std::u16string words;
};
std::vector<Ring> rings;

void MakeRings() {
  rings.resize(kFeatures);
  for (int i = 0; i < kFeatures; ++i) {
    Ring& ring = rings[static_cast<std::size_t>(i)];
    ring.x = i % kAcross;
    ring.y = i / kAcross * 0.7;
    ring.words = u"\u00D80." + std::u16string(1, static_cast<char16_t>(u'0' + i % 10)) + u"50";
    for (int k = 0; k < kCorners; ++k) {
      const double angle = 2 * std::numbers::pi * k / kCorners;
      ring.corners[k] = {ring.x + 0.2 * std::cos(angle), ring.y + 0.2 * std::sin(angle)};
    }
  }
}

void MakePicture() {
  morva::ClearPicture(picture, false);
  for (int i = 0; i < kFeatures; ++i) {
    const Ring& ring = rings[static_cast<std::size_t>(i)];
    morva::AddLoop(picture, ring.corners, morva::Ink::Feature, i);
    morva::AddLabel(picture, {ring.x, ring.y}, ring.words,
                    {morva::LabelSide::Above, 0.2, morva::Ink::Dimension, i});
  }
  view = morva::FitPicture(picture, kArea);
}

void KeepOutlines() {
  outlines.clear();
  for (const Ring& ring : rings) {
    for (int k = 0; k < kCorners; ++k) {
      const morva::PicturePoint& from = ring.corners[k];
      const morva::PicturePoint& to = ring.corners[(k + 1) % kCorners];
      outlines.push_back(platform::SegmentOf(morva::OnView(view, from.x, from.y),
                                             morva::OnView(view, to.x, to.y)));
    }
  }
}

int painted = 0;

void PaintBare(int, platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), 0x010F19);
  platform::PaintSegments(canvas, outlines.data(), static_cast<int>(outlines.size()),
                          platform::Pen{0x86AAC6});
}

void PaintWhole(int id, platform::Canvas& canvas) {
  morva::PaintPicture(canvas, picture, view);
  painted += id == morva::kViewCadCanvas ? 1 : 0;
}

void PaintAnew(int id, platform::Canvas& canvas) {
  MakePicture();
  PaintWhole(id, canvas);
}

void Stand() {
  if (platform::Exists(platform::kMainWindow)) return;
  MakeRings();
  MakePicture();
  KeepOutlines();
  events.paint = PaintWhole;
  bench::StandView(morva::kViewCadCanvas, events, painted);
}

double OneFrame(void (*paint)(int, platform::Canvas&)) {
  events.paint = paint;
  const double before = CpuMilliseconds();
  platform::WidgetOf(morva::kViewCadCanvas)->repaint();
  return CpuMilliseconds() - before;
}

void Frames(benchmark::State& state, void (*paint)(int, platform::Canvas&),
            const targets::Goal& goal) {
  Stand();
  const int paintedBefore = painted;
  std::vector<double> frames;
  std::vector<double> bare;
  for (auto step : state) {
    bare.push_back(OneFrame(PaintBare));
    const double spent = OneFrame(paint);
    frames.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  if (painted - paintedBefore < 100 || picture.full) std::abort();
  targets::Note(goal, targets::Median(frames), targets::Median(bare));
}

void PictureFrame(benchmark::State& state) {
  Frames(state, PaintWhole,
         {"Frame of a picture of 400 features", "ms", 0, 4, 0, "outlines alone"});
}

void PictureAnew(benchmark::State& state) {
  Frames(state, PaintAnew,
         {"Frame of it, made anew and its labels placed", "ms", 0, 6, 0, "outlines alone"});
}

// A plate of 400 features, each set by the user and so with its number, drawn anew.
void PaintPlate(int id, platform::Canvas& canvas) {
  morva::DrawPlate(morva::plate, {.selected = 7}, picture);
  view = morva::FitPicture(picture, kArea);
  PaintWhole(id, canvas);
}

void PlateFrame(benchmark::State& state) {
  morva::ResetPlate();
  morva::SetPlateLayout(morva::PlateLayout::Grid);
  morva::SetPlateText(morva::kPlateCountX, u"20");
  morva::SetPlateText(morva::kPlateCountY, u"20");
  for (int k = 0; k < kFeatures; ++k) morva::SetFeatureFlag(k, morva::FeatureFlag::Locked, true);
  Frames(state, PaintPlate,
         {"Frame of a plate of 400 features, made anew", "ms", 0, 4, 0, "other outlines alone"});
}

void PictureClick(benchmark::State& state) {
  Stand();
  MakePicture();
  int found = 0;
  int n = 0;
  std::vector<double> clicks;
  for (auto step : state) {
    const platform::Segment& s = outlines[static_cast<std::size_t>(n++ * 37) % outlines.size()];
    const double before = CpuMilliseconds();
    found += morva::PartAt(picture, view, static_cast<int>(s.x0), static_cast<int>(s.y0)) >= 0;
    const double spent = CpuMilliseconds() - before;
    clicks.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  if (found != n) std::abort();
  targets::Note({"Click into it", "ms", 0, 1}, targets::Median(clicks));
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK(PictureFrame)->Unit(kMs)->UseManualTime()->Iterations(100);
BENCHMARK(PictureAnew)->Unit(kMs)->UseManualTime()->Iterations(100);
BENCHMARK(PlateFrame)->Unit(kMs)->UseManualTime()->Iterations(100);
BENCHMARK(PictureClick)->Unit(kMs)->UseManualTime()->Iterations(500);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
