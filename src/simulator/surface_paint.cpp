#include "simulator/surface_paint.h"

#include "app/limits.h"
#include "app/palette.h"
#include "simulator/cut_surface.h"
#include "simulator/shown_path.h"

namespace morva {

namespace {

using platform::PointF;
using platform::Segment;

constexpr int kExampleStep = 4;  // an example's picture is small
Segment mesh[kMaxMeshSegments];
static_assert(kMaxMeshSegments == 2 * kSurfaceSamples * kSurfaceCells);

// Adds one row or column: `at` gives its heights, `place` its samples on the screen. Level
// stretches are straight on the screen as well and need one line each.
template <typename Height, typename Place>
int AddMeshLine(int count, const Height& at, const Place& place) {
  int from = 0;
  for (int i = 1; i < kSurfaceSamples; ++i) {
    const bool goesOn = i < kSurfaceCells && at(i) == at(from) && at(i + 1) == at(from);
    if (goesOn) continue;
    mesh[count++] = platform::SegmentOf(place(from), place(i));
    from = i;
  }
  return count;
}

}  // namespace

void PaintCutSurface(platform::Canvas& canvas, const Projection& p) {
  const CutSurface* const surface = CutSurfaceNow();
  if (!surface) return;
  const StockEnvelope& box = surface->box;
  const double stepX = (box.maxX - box.minX) / kSurfaceCells;
  const double stepY = (box.maxY - box.minY) / kSurfaceCells;
  const auto sample = [&](int row, int column) {
    return Project(p, box.minX + column * stepX, box.minY + row * stepY,
                   surface->heights[row][column]);
  };
  const int step = ExampleIsShown() ? kExampleStep : 1;
  int count = 0;
  for (int k = 0; k < kSurfaceSamples; k += step) {
    count = AddMeshLine(
        count, [&](int i) { return surface->heights[k][i]; }, [&](int i) { return sample(k, i); });
    count = AddMeshLine(
        count, [&](int i) { return surface->heights[i][k]; }, [&](int i) { return sample(i, k); });
  }
  platform::Pen pen;
  pen.colour = kPathSurface;
  pen.smooth = true;
  PaintSegments(canvas, mesh, count, pen);
}

std::u16string_view SurfaceCaption() {
  if (!SurfaceIsShown()) return {};
  return ExampleIsShown()
             ? u"Looping G-code example \u00B7 blue travel / teal cut"
             : u"Approximate cut surface \u00B7 48 \u00D7 48 samples \u00B7 library tool required";
}

}  // namespace morva
