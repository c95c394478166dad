#include "simulator/preview_paint.h"

#include "app/palette.h"
#include "library/units.h"
#include "simulator/coverage.h"
#include "simulator/place_pick.h"
#include "simulator/preview_state.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::Colour;
using platform::PointF;

// Whether the layer of this kind of ground is on.
bool IsPainted(Swept swept) {
  if (swept == Swept::Again && switches.showOverlap) return true;
  return swept != Swept::Never && previewState.coverage;
}

Colour ColourOf(Swept swept) {
  return swept == Swept::Again && switches.showOverlap ? kPathOverlap : kPathSwept;
}

// Cells of one colour beside each other in a row, and the rows above it with the same ones.
struct Patch {
  int row = 0, rows = 0;
  int from = 0, to = 0;  // columns, the last one not included
  Colour fill = 0;
};

void PaintPatch(Canvas& canvas, const Projection& p, const Coverage& ground, const Patch& patch) {
  const double left = ground.minX + patch.from * ground.cell;
  const double right = ground.minX + patch.to * ground.cell;
  const double low = ground.minY + patch.row * ground.cell;
  const double high = low + patch.rows * ground.cell;
  const PointF corners[] = {Project(p, left, low, ground.z), Project(p, right, low, ground.z),
                            Project(p, right, high, ground.z), Project(p, left, high, ground.z)};
  FillPolygon(canvas, corners, 4, patch.fill);
}

// The patches that begin in a row of cells; how many.
int PatchesOf(const Coverage& ground, int row, Patch* out) {
  int count = 0;
  for (int column = 0; column < ground.columns;) {
    const Swept swept = ground.cells[row][column];
    if (!IsPainted(swept)) {
      ++column;
      continue;
    }
    Patch patch{row, 1, column, column, ColourOf(swept)};
    while (patch.to < ground.columns && IsPainted(ground.cells[row][patch.to]) &&
           ColourOf(ground.cells[row][patch.to]) == patch.fill) {
      ++patch.to;
    }
    out[count++] = patch;
    column = patch.to;
  }
  return count;
}

bool SameSpan(const Patch& a, const Patch& b) {
  return a.from == b.from && a.to == b.to && a.fill == b.fill;
}

// Lines of a cross along the axes, of a length in pixels whatever the zoom.
void PaintAxesAt(Canvas& canvas, const Projection& p, double x, double y, double z, Colour colour) {
  constexpr double kReach = 14;  // pixels
  const double reach = kReach / p.scale;
  platform::Pen pen;
  pen.colour = colour;
  pen.width = 2;
  pen.smooth = true;
  PaintLine(canvas, Project(p, x - reach, y, z), Project(p, x + reach, y, z), pen);
  PaintLine(canvas, Project(p, x, y - reach, z), Project(p, x, y + reach, z), pen);
  PaintLine(canvas, Project(p, x, y, z - reach), Project(p, x, y, z + reach), pen);
  PaintEllipse(canvas, Project(p, x, y, z), kReach / 2, kReach / 2, pen);
}

}  // namespace

void PaintCoverage(Canvas& canvas, const Projection& p) {
  if (!previewState.coverage && !switches.showOverlap) return;
  const Coverage* const ground = CoverageNow();
  if (!ground) return;
  Patch open[kCoverageCells];
  int openCount = 0;
  for (int row = 0; row <= ground->rows; ++row) {
    Patch begun[kCoverageCells];
    const int count = row < ground->rows ? PatchesOf(*ground, row, begun) : 0;
    // What goes on from the row below grows; the rest of it is done.
    int next = 0;
    for (int i = 0; i < openCount; ++i) {
      while (next < count && begun[next].from < open[i].from) ++next;
      if (next < count && SameSpan(begun[next], open[i])) {
        begun[next].row = open[i].row;
        begun[next].rows = open[i].rows + 1;
      } else {
        PaintPatch(canvas, p, *ground, open[i]);
      }
    }
    for (int i = 0; i < count; ++i) open[i] = begun[i];
    openCount = count;
  }
}

void PaintPreviewMarks(Canvas& canvas, const Projection& p) {
  if (!PreviewIsShown()) return;
  const PreviewState& state = previewState;
  if (state.marked) {
    PaintAxesAt(canvas, p, state.markerX, state.markerY, state.markerZ, kPathMarker);
  }
  PickedPlace cross;
  if (PickCross(cross)) PaintAxesAt(canvas, p, cross.x, cross.y, cross.z, kPathMeasure);
}

std::u16string CoverageWords() {
  if (!HasCoverage() || (!previewState.coverage && !switches.showOverlap)) return {};
  char16_t text[kReadOutUnits] = {};
  AppendLabelNumber(text, kReadOutUnits, u"Cutter width ", previewState.diameter, 4);
  AppendBounded(text, kReadOutUnits, UnitsMetric() ? u" mm" : u" in");
  if (previewState.coverage) AppendBounded(text, kReadOutUnits, u" \u00B7 blue: swept");
  if (switches.showOverlap) AppendBounded(text, kReadOutUnits, u" \u00B7 brown: swept again");
  return text;
}

}  // namespace morva
