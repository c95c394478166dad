#include "cad/canvas/canvas_paint.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "app/command_ids.h"
#include "app/palette.h"
#include "cad/canvas/canvas_model.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/construct.h"
#include "cad/geometry/outlines.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimension_paint.h"
#include "cad/tools/select_drag.h"
#include "cad/tools/size_boxes.h"
#include "library/outline.h"
#include "platform/canvas.h"
#include "text/codetext.h"

namespace morva {
namespace {

using platform::Canvas;
using platform::Colour;
using platform::FontRole;
using platform::Pen;
using platform::PointF;
using platform::Rect;
using platform::Segment;
using platform::SegmentOf;

constexpr Colour kBright = kBrightAccent;

constexpr int kGridLines = 40;          // each way from the origin
constexpr int kGridReach = 20;          // spacings that a line runs either way
constexpr double kPointReach = 0.025;   // of a work point's cross, drawing units
constexpr double kLeastPointReach = 4;  // pixels
constexpr double kOriginRadius = 4;     // pixels
constexpr int kHandleReach = 3;         // pixels each way of the middle
constexpr double kHandleRoom = 7;       // from handle to handle for each pixel of their reach
constexpr int kCrossFrom = 5;
constexpr int kCrossTo = 12;
constexpr double kCursorRing = 9;
constexpr int kSnapReach = 5;
constexpr int kMarkReach = 4;
constexpr int kTextAcross = 16;  // of the size text from the cursor
constexpr int kTextAbove = 10;

Segment outlineSegments[kMaxItems * kOutlinePoints];

// One paint's canvas with what all of it needs.
struct Sheet {
  Canvas& canvas;
  Rect client;
  CanvasTransform transform;
};

Pen PenOf(Colour colour, int width) {
  Pen pen;
  pen.colour = colour;
  pen.width = width;
  return pen;
}

Pen Dashed(Colour colour, int width) {
  Pen pen = PenOf(colour, width);
  pen.dashed = true;
  return pen;
}

Pen Smooth(Colour colour, int width) {
  Pen pen = PenOf(colour, width);
  pen.smooth = true;
  return pen;
}

PointF Real(platform::Point p) { return {static_cast<double>(p.x), static_cast<double>(p.y)}; }

bool IsCurve(const SketchObject& object) {
  return object.type == kTypeCircle || object.type == kTypeSlot;
}

PointF PlaceOn(const Sheet& sheet, bool curve, double x, double y) {
  return curve ? ExactPixelOf(sheet.transform, x, y) : Real(PixelOf(sheet.transform, x, y));
}

int AddOutline(const Sheet& sheet, bool curve, const double* xs, const double* ys, int points,
               Segment* to) {
  if (points < 2) return 0;
  PointF from = PlaceOn(sheet, curve, xs[0], ys[0]);
  for (int i = 1; i < points; ++i) {
    const PointF next = PlaceOn(sheet, curve, xs[i], ys[i]);
    to[i - 1] = SegmentOf(from, next);
    from = next;
  }
  return points - 1;
}

// A work point's cross, which a sketch in millimetres would leave too small to see.
int AddPointMark(const Sheet& sheet, const SketchObject& point, Segment* to) {
  const PointF at = PlaceOn(sheet, false, point.x, point.y);
  const double reach = std::max(kPointReach * sheet.transform.scale, kLeastPointReach);
  to[0] = SegmentOf({at.x - reach, at.y}, {at.x + reach, at.y});
  to[1] = SegmentOf({at.x, at.y - reach}, {at.x, at.y + reach});
  return 2;
}

// The piece of a line inside `area`, so that nothing dashes its way to far-off places.
bool ClipLine(const Rect& area, PointF& from, PointF& to) {
  double first = 0;
  double last = 1;
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double steps[4] = {-dx, dx, -dy, dy};
  const double rooms[4] = {from.x - area.left, area.right - from.x, from.y - area.top,
                           area.bottom - from.y};
  for (int i = 0; i < 4; ++i) {
    if (steps[i] == 0) {
      if (rooms[i] < 0) return false;
      continue;
    }
    const double t = rooms[i] / steps[i];
    if (steps[i] < 0) {
      first = std::max(first, t);
    } else {
      last = std::min(last, t);
    }
  }
  if (!(first <= last)) return false;
  const PointF start = from;
  from = {start.x + first * dx, start.y + first * dy};
  to = {start.x + last * dx, start.y + last * dy};
  return true;
}

void PaintDashed(const Sheet& sheet, PointF from, PointF to, const Pen& pen) {
  if (ClipLine(sheet.client, from, to)) PaintLine(sheet.canvas, from, to, pen);
}

void PaintGrid(const Sheet& sheet) {
  if (!sketch.gridOn) return;
  const double spacing = CanvasGridStep();
  const double reach = kGridReach * spacing;
  int count = 0;
  for (int i = -kGridLines; i <= kGridLines; ++i) {
    const double at = i * spacing;
    outlineSegments[count++] =
        SegmentOf(PlaceOn(sheet, false, at, -reach), PlaceOn(sheet, false, at, reach));
    outlineSegments[count++] =
        SegmentOf(PlaceOn(sheet, false, -reach, at), PlaceOn(sheet, false, reach, at));
  }
  PaintSegments(sheet.canvas, outlineSegments, count, PenOf(kCadGrid, 1));
}

void PaintAxes(const Sheet& sheet) {
  const PointF origin = PlaceOn(sheet, false, 0, 0);
  const Rect& client = sheet.client;
  const Segment across = SegmentOf({static_cast<double>(client.left), origin.y},
                                   {static_cast<double>(client.right), origin.y});
  const Segment down = SegmentOf({origin.x, static_cast<double>(client.top)},
                                 {origin.x, static_cast<double>(client.bottom)});
  PaintSegments(sheet.canvas, &across, 1, PenOf(kCadAxisX, 1));
  PaintSegments(sheet.canvas, &down, 1, PenOf(kCadAxisY, 1));
  if (!platform::RectHolds(client, static_cast<int>(origin.x), static_cast<int>(origin.y))) return;
  FillEllipse(sheet.canvas, origin, kOriginRadius, kOriginRadius, kMainText);
}

bool IsBright(int index) { return IsMultiSelected(index) || InSelectedPart(index); }

bool OnScreen(const Sheet& sheet, const OutlineOf& outline) {
  const PointF low = PlaceOn(sheet, true, outline.minX, outline.minY);
  const PointF high = PlaceOn(sheet, true, outline.maxX, outline.maxY);
  const Rect& c = sheet.client;
  return high.x >= c.left - 2 && low.x <= c.right + 2 && low.y >= c.top - 2 &&
         high.y <= c.bottom + 2;
}

int AddObject(const Sheet& sheet, int index, Segment* to) {
  const OutlineOf& outline = OutlineAt(index);
  if (!OnScreen(sheet, outline)) return 0;
  if (sketch.objects[index].type == kTypeWorkPoint) {
    return AddPointMark(sheet, sketch.objects[index], to);
  }
  return AddOutline(sheet, IsCurve(sketch.objects[index]), outline.xs, outline.ys, outline.count,
                    to);
}

void PaintAxisObject(const Sheet& sheet, int index, Colour colour, int width) {
  const OutlineOf& outline = OutlineAt(index);
  PaintDashed(sheet, PlaceOn(sheet, false, outline.xs[0], outline.ys[0]),
              PlaceOn(sheet, false, outline.xs[1], outline.ys[1]), Dashed(colour, width));
}

// All objects of one look in one batch; work axes, which are dashed, on their own.
template <typename Wanted>
void PaintObjects(const Sheet& sheet, Colour colour, int width, const Wanted& wanted) {
  int count = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (sketch.hidden[i] || !wanted(i)) continue;
    if (sketch.objects[i].type == kTypeWorkAxis) {
      PaintAxisObject(sheet, i, colour, width);
    } else {
      count += AddObject(sheet, i, outlineSegments + count);
    }
  }
  if (count > 0) PaintSegments(sheet.canvas, outlineSegments, count, PenOf(colour, width));
}

bool IsConstruction(int index) { return sketch.objects[index].type >= kTypeWorkPoint; }

void PaintAllObjects(const Sheet& sheet) {
  PaintObjects(sheet, kCadConstruction, 1, [](int i) { return IsConstruction(i) && !IsBright(i); });
  PaintObjects(sheet, kCadObject, 1, [](int i) { return !IsConstruction(i) && !IsBright(i); });
  PaintObjects(sheet, kBright, 2, IsBright);
  PaintObjects(sheet, kCadHover, 2,
               [](int i) { return i == tools.hoverObject || i == tools.tangentTarget; });
}

void FillAround(Canvas& canvas, PointF at, int reach, Colour colour) {
  const int x = static_cast<int>(std::floor(at.x + 0.5));
  const int y = static_cast<int>(std::floor(at.y + 0.5));
  FillArea(canvas, {x - reach, y - reach, x + reach + 1, y + reach + 1}, colour);
}

bool NearClient(const Sheet& sheet, PointF at) {
  const Rect& c = sheet.client;
  return at.x > c.left - 50 && at.x < c.right + 50 && at.y > c.top - 50 && at.y < c.bottom + 50;
}

// Handles shrink with the room between them, so that what they belong to stays in sight; 0 where
// there is none.
int HandleReach(const PointF* points, int count) {
  double nearest = kHandleRoom * kHandleReach;
  for (int i = 0; i < count; ++i) {
    for (int k = i + 1; k < count; ++k) {
      nearest = std::min(nearest, std::hypot(points[i].x - points[k].x, points[i].y - points[k].y));
    }
  }
  return static_cast<int>(nearest / kHandleRoom);
}

void PaintHandles(const Sheet& sheet) {
  PointF points[9];
  const int count = SelectionHandles(points);
  const int reach = HandleReach(points, count);
  if (reach == 0) return;
  for (int i = 0; i < count && i < 9; ++i) {
    if (!NearClient(sheet, points[i])) continue;
    if (reach == kHandleReach) {
      FillAround(sheet.canvas, points[i], reach + 1, kWindowBackground);
    }
    FillAround(sheet.canvas, points[i], reach, kBright);
    if (reach > 1) FillAround(sheet.canvas, points[i], reach - 1, kMainText);
  }
}

void PaintRubberBand(const Sheet& sheet) {
  Rect band;
  if (!RubberBand(band)) return;
  const PointF corners[5] = {Real({band.left, band.top}), Real({band.right, band.top}),
                             Real({band.right, band.bottom}), Real({band.left, band.bottom}),
                             Real({band.left, band.top})};
  PaintPolyline(sheet.canvas, corners, 5, Dashed(kBright, 1));
}

bool Inside(const Sheet& sheet, PointF at) {
  const Rect& c = sheet.client;
  return at.x >= c.left && at.x <= c.right && at.y >= c.top && at.y <= c.bottom;
}

// Segments that follow each other make one line, or every chord of an arc would begin its
// dashes anew and look solid.
void PaintTrimPreview(const Sheet& sheet) {
  const Pen pen = Dashed(kCadTrim, 2);
  const bool known = tools.hoverObject >= 0 && tools.hoverObject < sketch.objectCount;
  const bool curve = known && IsCurve(sketch.objects[tools.hoverObject]);
  PointF chain[kMaxPreviewSegments + 1];
  int count = 0;
  const auto end = [&] {
    // On bare ground: the highlight of the whole edge would show between the dashes.
    if (count > 1) {
      PaintPolyline(sheet.canvas, chain, count, PenOf(kWindowBackground, 2));
      PaintPolyline(sheet.canvas, chain, count, pen);
    }
    count = 0;
  };
  const int segments = std::clamp(tools.previewSegmentCount, 0, kMaxPreviewSegments);
  for (int i = 0; i < segments; ++i) {
    const PreviewSegment& s = tools.previewSegments[i];
    const PointF from = PlaceOn(sheet, curve, s.x0, s.y0);
    const PointF to = PlaceOn(sheet, curve, s.x1, s.y1);
    if (!Inside(sheet, from) || !Inside(sheet, to)) {
      end();
      PaintDashed(sheet, from, to, pen);
      continue;
    }
    const bool follows = count > 0 && std::fabs(chain[count - 1].x - from.x) < 0.5 &&
                         std::fabs(chain[count - 1].y - from.y) < 0.5;
    if (!follows) {
      end();
      chain[count++] = from;
    }
    chain[count++] = to;
  }
  end();
}

int SidesOf(const SketchObject& figure) {
  constexpr int kLeast = 3;
  constexpr int kRoom = kOutlinePoints - 1;
  if (!(figure.size2 > kLeast)) return kLeast;
  return figure.size2 < kRoom ? static_cast<int>(figure.size2) : kRoom;
}

// The figure of a polygon preview, which holds its radius in `size` and its sides in `size2`.
int PolygonOutline(const SketchObject& figure, double* xs, double* ys) {
  const int sides = SidesOf(figure);
  for (int i = 0; i <= sides; ++i) {
    const double angle = figure.angle + 360.0 * (i % sides) / sides;
    xs[i] = figure.x + figure.size * ExactCosine(angle);
    ys[i] = figure.y + figure.size * ExactSine(angle);
  }
  return sides + 1;
}

bool ShownPreview(SketchObject& object) {
  if (tools.previewValid && tools.constructionMethod != 0) {
    object = tools.previewObject;
    return true;
  }
  if (!tools.dragActive || tools.dragTool == 0) return false;
  object = ObjectFromDrag(tools.dragTool, tools.dragStartX, tools.dragStartY, tools.dragEndX,
                          tools.dragEndY);
  return true;
}

void PaintPreview(const Sheet& sheet) {
  SketchObject object;
  if (!ShownPreview(object)) return;
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  const bool polygon = tools.constructionMethod == kIdMethodPolygon;
  const int count = polygon ? PolygonOutline(object, xs, ys) : ObjectOutline(object, xs, ys);
  if (object.type == kTypeWorkAxis) {
    PaintDashed(sheet, PlaceOn(sheet, false, xs[0], ys[0]), PlaceOn(sheet, false, xs[1], ys[1]),
                Dashed(kBright, 2));
    return;
  }
  const int segments =
      object.type == kTypeWorkPoint
          ? AddPointMark(sheet, object, outlineSegments)
          : AddOutline(sheet, !polygon && IsCurve(object), xs, ys, count, outlineSegments);
  if (segments > 0) PaintSegments(sheet.canvas, outlineSegments, segments, PenOf(kBright, 2));
}

void PaintCross(const Sheet& sheet, PointF at, int reach, Colour colour) {
  if (!NearClient(sheet, at)) return;
  const Segment bars[2] = {SegmentOf({at.x - reach, at.y}, {at.x + reach, at.y}),
                           SegmentOf({at.x, at.y - reach}, {at.x, at.y + reach})};
  PaintSegments(sheet.canvas, bars, 2, PenOf(colour, 1));
}

// Points picked so far, and the pivot while the revolve panel is up.
void PaintPicks(const Sheet& sheet) {
  const bool picksObject = tools.tangentTarget >= 0;
  const int picked =
      tools.constructionMethod == 0 || picksObject ? 0 : std::clamp(tools.constructionClicks, 0, 3);
  for (int i = 0; i < picked; ++i) {
    PaintCross(sheet, PlaceOn(sheet, false, tools.pointsX[i], tools.pointsY[i]), kMarkReach,
               kCadHover);
  }
  if (tools.panelMode == kPanelRevolve || tools.geometryTool == kGeometryPivot) {
    const PointF pivot = PlaceOn(sheet, false, tools.pivotX, tools.pivotY);
    PaintCross(sheet, pivot, kMarkReach + 3, kCadHover);
    if (NearClient(sheet, pivot)) {
      PaintEllipse(sheet.canvas, pivot, kMarkReach, kMarkReach, Smooth(kCadHover, 1));
    }
  }
}

std::u16string SizeText(const SketchObject& object) {
  std::u16string text;
  if (tools.constructionMethod == kIdMethodPolygon) {
    text = u"Radius / sides ";
    text += SketchNumber(object.size, 4);
    text += u" / ";
    text += IntegerText(SidesOf(object));
    return text;
  }
  text = object.type == kTypeCircle ? u"Diameter " : u"Length / width ";
  text += SketchNumber(object.size, 4);
  if (object.type == kTypeRectangle || object.type == kTypeSlot) {
    text += u" / ";
    text += SketchNumber(object.size2, 4);
  }
  return text;
}

// Beside the cursor, and on its other side where the canvas ends.
void PaintSizeText(const Sheet& sheet) {
  SketchObject object;
  const platform::Point cursor = CanvasCursor();
  if (tools.sizePanelShown || cursor.x < 0 || !ShownPreview(object)) return;
  if (object.type == kTypeWorkPoint) return;
  const std::u16string text = SizeText(object);
  const int width = platform::TextWidth(FontRole::Small, text) + 8;
  const int height = platform::TextHeight(FontRole::Small) + 2;
  int left = cursor.x + kTextAcross;
  int top = cursor.y - kTextAbove - height;
  if (left + width > sheet.client.right) left = cursor.x - kTextAcross - width;
  if (top < sheet.client.top) top = cursor.y + kTextAcross;
  const Rect plate{left, top, left + width, top + height};
  FillArea(sheet.canvas, plate, kPanelBackground);
  FrameArea(sheet.canvas, plate, PenOf(kPanelLine, 1));
  PaintText(sheet.canvas, plate, text, FontRole::Small, kMainText,
            platform::kAlignCentre | platform::kAlignMiddle);
}

void PaintSnapMark(const Sheet& sheet) {
  double x = 0;
  double y = 0;
  // Trim cuts where the pointer is, whatever the search found.
  if (tools.geometryTool == kGeometryTrim || !SnapPlace(x, y)) return;
  const PointF at = PlaceOn(sheet, false, x, y);
  if (!NearClient(sheet, at)) return;
  if (tools.snapAtCentre) {
    PaintEllipse(sheet.canvas, at, kSnapReach, kSnapReach, Smooth(kCadHover, 2));
    return;
  }
  const int px = static_cast<int>(at.x);
  const int py = static_cast<int>(at.y);
  FrameArea(sheet.canvas,
            {px - kSnapReach, py - kSnapReach, px + kSnapReach + 1, py + kSnapReach + 1},
            PenOf(kCadHover, 2));
}

void PaintCrosshair(const Sheet& sheet) {
  if (!CrosshairShown()) return;
  const platform::Point cursor = CanvasCursor();
  const double x = cursor.x;
  const double y = cursor.y;
  const Segment arms[4] = {SegmentOf({x - kCrossTo, y}, {x - kCrossFrom, y}),
                           SegmentOf({x + kCrossFrom, y}, {x + kCrossTo, y}),
                           SegmentOf({x, y - kCrossTo}, {x, y - kCrossFrom}),
                           SegmentOf({x, y + kCrossFrom}, {x, y + kCrossTo})};
  PaintSegments(sheet.canvas, arms, 4, PenOf(kMainText, 1));
  // A click that selects does not snap.
  if (tools.snapHit && AnyToolInHand()) {
    PaintSnapMark(sheet);
  } else {
    PaintEllipse(sheet.canvas, {x, y}, kCursorRing, kCursorRing, Smooth(kMainText, 1));
  }
}

void PaintSketch(Canvas& canvas) {
  const Rect client = CanvasArea(canvas);
  const Sheet sheet{canvas, client, TransformFor(client)};
  PaintGrid(sheet);
  PaintAxes(sheet);
  PaintAllObjects(sheet);
  PaintHandles(sheet);
  PaintRubberBand(sheet);
  PaintTrimPreview(sheet);
  PaintDimensions(canvas);
  PaintPreview(sheet);
  PaintPicks(sheet);
  PaintSizeText(sheet);
  PaintSizeBoxes(canvas);
  PaintCrosshair(sheet);
}

}  // namespace

void PaintCanvas(Canvas& canvas) {
  FillArea(canvas, CanvasArea(canvas), kWindowBackground);
  if (canvasView.modelView && !AnyToolInHand()) {
    PaintModel(canvas);
  } else {
    PaintSketch(canvas);
  }
}

}  // namespace morva
