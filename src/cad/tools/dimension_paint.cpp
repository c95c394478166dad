#include "cad/tools/dimension_paint.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "app/palette.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/outlines.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "library/outline.h"
#include "platform/canvas.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::PointF;
using platform::Rect;

// Pixels from the measured points to the dimension line, to the left of their direction on the
// screen below 0: above a line that runs to the right.
constexpr double kLengthOffset = -22;
constexpr double kBottomOffset = 22;
constexpr double kRightOffset = -26;
constexpr double kMeasureOffset = -20;
constexpr double kGap = 3;        // between a point and its extension line
constexpr double kOvershoot = 4;  // of an extension line beyond the dimension line
constexpr double kTick = 4;       // half of the stroke that ends a dimension line
constexpr int kPadding = 4;
constexpr double kClear = 6;     // between what is measured and the text
constexpr int kSmallShape = 60;  // pixels
constexpr int kOnText = 8;       // times worse than on a small shape
constexpr int kLabelLines = 5;
constexpr double kFarthest = 1e6;  // pixels; what lies farther out is not drawn

Rect labels[kMaxItems][kDimensionLabels];

PointF OnCanvas(double x, double y) {
  const platform::Point at = ToCanvas(x, y);
  return {static_cast<double>(at.x), static_cast<double>(at.y)};
}

bool Drawable(const PointF& p) { return std::fabs(p.x) < kFarthest && std::fabs(p.y) < kFarthest; }

PointF Along(const PointF& p, const PointF& direction, double distance) {
  return {p.x + direction.x * distance, p.y + direction.y * distance};
}

std::u16string ValueText(const char16_t* mark, double value) {
  return mark + SketchNumber(value, 4) + (sketch.metric ? u" mm" : u" in");
}

// One label, from its lines to the place of its text.
struct Label {
  PointF from, to;  // what is measured
  double offset = 0;
  std::u16string text;
  platform::Colour colour = kCadDimension;
  Rect* kept = nullptr;  // where its rectangle is told
  double behind = 0;     // pixels that the shape reaches to the other side
  Rect plate;
};
Label queue[kMaxItems * kDimensionLabels + 1];
int queued = 0;

void AddLabel(const PointF& from, const PointF& to, double offset, const std::u16string& text,
              Rect* kept, double behind = 0) {
  if (!Drawable(from) || !Drawable(to)) return;
  queue[queued++] = {from, to, offset, text, kCadDimension, kept, behind, Rect{}};
}

double Length(const Label& label) {
  const double dx = label.to.x - label.from.x;
  const double dy = label.to.y - label.from.y;
  return SketchRoot(dx * dx + dy * dy);
}

PointF RunOf(const Label& label) {
  const double length = Length(label);
  if (!(length > 0)) return {1, 0};
  return {(label.to.x - label.from.x) / length, (label.to.y - label.from.y) / length};
}

PointF NormalOf(const Label& label) {
  const PointF run = RunOf(label);
  return {-run.y, run.x};
}

// The lines of labels of one colour. Those from pixel to pixel along an axis or a diagonal have no
// edges to be smoothed, which costs several times as much.
struct Lines {
  platform::Segment segments[std::size(queue) * kLabelLines];
  int count = 0;
};
Lines plain;
Lines smooth;

bool IsWhole(const PointF& p) { return p.x == std::floor(p.x) && p.y == std::floor(p.y); }

void AddLine(const PointF& from, const PointF& to) {
  const double across = std::fabs(to.x - from.x);
  const double upright = std::fabs(to.y - from.y);
  const bool straight = across == 0 || upright == 0 || across == upright;
  Lines& lines = straight && IsWhole(from) && IsWhole(to) ? plain : smooth;
  lines.segments[lines.count++] = platform::SegmentOf(from, to);
}

// Extension lines and the dimension line with a stroke at each end: kLabelLines.
void AddLines(const Label& label) {
  const PointF run = RunOf(label);
  const PointF normal = NormalOf(label);
  const double side = label.offset < 0 ? -1 : 1;
  const PointF a = Along(label.from, normal, label.offset);
  const PointF b = Along(label.to, normal, label.offset);
  AddLine(Along(label.from, normal, side * kGap), Along(a, normal, side * kOvershoot));
  AddLine(Along(label.to, normal, side * kGap), Along(b, normal, side * kOvershoot));
  AddLine(a, b);
  for (const PointF& end : {a, b}) {
    AddLine(Along(Along(end, run, -kTick), normal, -kTick),
            Along(Along(end, run, kTick), normal, kTick));
  }
}

void PaintBatch(platform::Canvas& canvas, Lines& lines, platform::Colour colour, bool smoothEdges) {
  platform::Pen pen;
  pen.colour = colour;
  pen.smooth = smoothEdges;
  PaintSegments(canvas, lines.segments, lines.count, pen);
  lines.count = 0;
}

// Those of one colour in one batch; labels of one colour follow each other.
void PaintLines(platform::Canvas& canvas) {
  for (int i = 0; i < queued; ++i) {
    AddLines(queue[i]);
    if (i + 1 < queued && queue[i + 1].colour == queue[i].colour) continue;
    PaintBatch(canvas, plain, queue[i].colour, false);
    PaintBatch(canvas, smooth, queue[i].colour, true);
  }
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// The boxes of closed shapes so small that a text would hide them whole.
Rect shapes[kMaxItems];
int shapeCount = 0;

void CollectShapes() {
  shapeCount = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    const std::int32_t type = sketch.objects[i].type;
    if (sketch.hidden[i] || type < kTypeRectangle || type > kTypeSlot) continue;
    const OutlineOf& outline = OutlineAt(i);
    const platform::Point low = ToCanvas(outline.minX, outline.minY);
    const platform::Point high = ToCanvas(outline.maxX, outline.maxY);
    if (high.x - low.x > kSmallShape || low.y - high.y > kSmallShape) continue;
    shapes[shapeCount++] = {low.x, high.y, high.x + 1, low.y + 1};
  }
}

// How badly a text lies at `plate`: on earlier texts, on small shapes.
int FaultsAt(const Rect& plate, int index) {
  int faults = 0;
  for (int i = 0; i < index; ++i) faults += Overlap(queue[i].plate, plate) ? kOnText : 0;
  for (int i = 0; i < shapeCount; ++i) faults += Overlap(shapes[i], plate) ? 1 : 0;
  return faults;
}

// On the dimension line, a row farther out, or on the other side of what is measured: the first
// of the places with the least faults. Inside the client while what is measured is.
void PlaceText(const Rect& client, int index) {
  Label& label = queue[index];
  const int width = platform::TextWidth(FontRole::Small, label.text) + 2 * kPadding;
  const int height = platform::TextHeight(FontRole::Small) + 2;
  const PointF normal = NormalOf(label);
  const double side = label.offset < 0 ? -1 : 1;
  const double across = width * std::fabs(normal.x) + height * std::fabs(normal.y);
  // A wide text beside an upright edge would cover the edge and its handle: it moves outwards.
  const double reach = std::max(std::fabs(label.offset), across / 2 + kClear);
  const double back = -(label.behind + kClear + across / 2);
  const double places[] = {reach, reach + across + 1, back, back - across - 1};
  const PointF measured{(label.from.x + label.to.x) / 2, (label.from.y + label.to.y) / 2};
  const bool inside =
      platform::RectHolds(client, static_cast<int>(measured.x), static_cast<int>(measured.y));
  int least = -1;
  for (const double place : places) {
    const PointF middle = Along(measured, normal, side * place);
    Rect plate;
    plate.left = static_cast<int>(std::lround(middle.x)) - width / 2;
    plate.top = static_cast<int>(std::lround(middle.y)) - height / 2;
    if (inside) {
      plate.left = std::max(client.left, std::min(plate.left, client.right - width));
      plate.top = std::max(client.top, std::min(plate.top, client.bottom - height));
    }
    plate.right = plate.left + width;
    plate.bottom = plate.top + height;
    const int faults = FaultsAt(plate, index);
    if (least >= 0 && faults >= least) continue;
    least = faults;
    label.plate = plate;
    if (faults == 0) return;
  }
}

// All lines lie below all texts, and each text on ground of its own.
void PaintQueue(platform::Canvas& canvas) {
  const Rect client = CanvasArea(canvas);
  CollectShapes();
  PaintLines(canvas);
  for (int i = 0; i < queued; ++i) {
    PlaceText(client, i);
    const Label& label = queue[i];
    PaintLabel(canvas, label.plate, label.text, FontRole::Small, label.colour, kWindowBackground,
               platform::kAlignCentre | platform::kAlignMiddle);
    if (label.kept) *label.kept = label.plate;
  }
}

void AddBoxLabels(const SketchObject& object, Rect* rects) {
  double xs[9];
  double ys[9];
  ObjectSnapPoints(object, xs, ys);  // the centre, then the corners from the lower left one
  AddLabel(OnCanvas(xs[1], ys[1]), OnCanvas(xs[2], ys[2]), kBottomOffset,
           ValueText(u"W ", object.size), &rects[0]);
  // Downwards, so that the label stands outside.
  AddLabel(OnCanvas(xs[3], ys[3]), OnCanvas(xs[2], ys[2]), kRightOffset,
           ValueText(u"H ", object.size2), &rects[1]);
}

void AddObjectLabels(const SketchObject& object, Rect* rects) {
  switch (object.type) {
    case kTypeLine:
    case kTypeWorkAxis: {
      double endX = 0;
      double endY = 0;
      LineEndPoint(object, endX, endY);
      AddLabel(OnCanvas(object.x, object.y), OnCanvas(endX, endY), kLengthOffset,
               ValueText(u"L ", object.size), &rects[0]);
      break;
    }
    case kTypeCircle: {
      const double r = object.size / 2;
      const PointF left = OnCanvas(object.x - r, object.y);
      const PointF right = OnCanvas(object.x + r, object.y);
      AddLabel(left, right, kLengthOffset, ValueText(u"\u00D8 ", object.size), &rects[0],
               (right.x - left.x) / 2);
      break;
    }
    case kTypeRectangle:
    case kTypeSlot:
      AddBoxLabels(object, rects);
      break;
    default:
      break;
  }
}

// A picked point, until its partner is there and after.
void PaintPick(platform::Canvas& canvas, const PointF& at) {
  if (!Drawable(at)) return;
  const int x = static_cast<int>(at.x);
  const int y = static_cast<int>(at.y);
  FillArea(canvas, Rect{x - 3, y - 3, x + 4, y + 4}, kCadMeasure);
}

void PaintMeasure(platform::Canvas& canvas) {
  PointF picks[2];
  const int count = tools.constructionClicks < 2 ? tools.constructionClicks : 2;
  for (int i = 0; i < count; ++i) {
    picks[i] = OnCanvas(tools.pointsX[i], tools.pointsY[i]);
    PaintPick(canvas, picks[i]);
  }
  if (count < 2) return;
  const double dx = tools.pointsX[1] - tools.pointsX[0];
  const double dy = tools.pointsY[1] - tools.pointsY[0];
  if (!Drawable(picks[0]) || !Drawable(picks[1])) return;
  queue[queued++] = {picks[0],
                     picks[1],
                     kMeasureOffset,
                     ValueText(u"REF ", SketchRoot(dx * dx + dy * dy)),
                     kCadMeasure,
                     nullptr,
                     0,
                     Rect{}};
}

}  // namespace

void PaintDimensions(platform::Canvas& canvas) {
  ForgetDimensionLabels();
  queued = 0;
  if (!tools.dimensionMode && tools.constructionMethod == 0) return;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!sketch.hidden[i]) AddObjectLabels(sketch.objects[i], labels[i]);
  }
  if (tools.measureMode) PaintMeasure(canvas);
  PaintQueue(canvas);
}

Rect DimensionLabel(int index, int label) {
  const bool known = index >= 0 && index < kMaxItems && label >= 0 && label < kDimensionLabels;
  return known ? labels[index][label] : Rect{};
}

void ForgetDimensionLabels() {
  for (auto& pair : labels) {
    for (Rect& rect : pair) rect = Rect{};
  }
}

}  // namespace morva
