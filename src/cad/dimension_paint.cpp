// The labels of dimensions, computed from the objects at each paint.

#include <cmath>
#include <string>

#include "app/palette.h"
#include "cad/canvas.h"
#include "cad/dimensions.h"
#include "cad/outline.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "platform/canvas.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::PointF;
using platform::Rect;

constexpr platform::Colour kLabelColour = 0xF1BE4C;
constexpr platform::Colour kMeasureColour = 0xFFFFFF;
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
constexpr double kClear = 6;       // between what is measured and the text
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

// Extension lines, dimension line with a stroke at each end, and the text on a plate at its
// middle. The plate's rectangle; empty when nothing was drawn.
Rect PaintLabel(platform::Canvas& canvas, const PointF& from, const PointF& to, double offset,
                const std::u16string& text, platform::Colour colour) {
  if (!Drawable(from) || !Drawable(to)) return Rect{};
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double length = SketchRoot(dx * dx + dy * dy);
  const PointF run = length > 0 ? PointF{dx / length, dy / length} : PointF{1, 0};
  const PointF normal{-run.y, run.x};
  const double side = offset < 0 ? -1 : 1;
  const PointF a = Along(from, normal, offset);
  const PointF b = Along(to, normal, offset);
  platform::Pen pen;
  pen.colour = colour;
  pen.smooth = true;
  PaintLine(canvas, Along(from, normal, side * kGap), Along(a, normal, side * kOvershoot), pen);
  PaintLine(canvas, Along(to, normal, side * kGap), Along(b, normal, side * kOvershoot), pen);
  PaintLine(canvas, a, b, pen);
  for (const PointF& end : {a, b}) {
    PaintLine(canvas, Along(Along(end, run, -kTick), normal, -kTick),
              Along(Along(end, run, kTick), normal, kTick), pen);
  }
  const int width = platform::TextWidth(FontRole::Small, text) + 2 * kPadding;
  const int height = platform::TextHeight(FontRole::Small) + 2;
  // A wide text beside an upright edge would cover the edge and its handle: it moves outwards.
  const double reach = (width * std::fabs(normal.x) + height * std::fabs(normal.y)) / 2 + kClear;
  const double lack = reach - std::fabs(offset);
  const PointF middle =
      Along({(a.x + b.x) / 2, (a.y + b.y) / 2}, normal, lack > 0 ? side * lack : 0);
  Rect plate;
  plate.left = static_cast<int>(std::lround(middle.x)) - width / 2;
  plate.top = static_cast<int>(std::lround(middle.y)) - height / 2;
  plate.right = plate.left + width;
  plate.bottom = plate.top + height;
  FillArea(canvas, plate, kWindowBackground);
  PaintText(canvas, plate, text, FontRole::Small, colour,
            platform::kAlignCentre | platform::kAlignMiddle);
  return plate;
}

void PaintBoxLabels(platform::Canvas& canvas, const SketchObject& object, Rect* rects) {
  double xs[9];
  double ys[9];
  ObjectSnapPoints(object, xs, ys);  // the centre, then the corners from the lower left one
  rects[0] = PaintLabel(canvas, OnCanvas(xs[1], ys[1]), OnCanvas(xs[2], ys[2]), kBottomOffset,
                        ValueText(u"W ", object.size), kLabelColour);
  // Downwards, so that the label stands outside.
  rects[1] = PaintLabel(canvas, OnCanvas(xs[3], ys[3]), OnCanvas(xs[2], ys[2]), kRightOffset,
                        ValueText(u"H ", object.size2), kLabelColour);
}

void PaintObjectLabels(platform::Canvas& canvas, const SketchObject& object, Rect* rects) {
  switch (object.type) {
    case kTypeLine:
    case kTypeWorkAxis: {
      double endX = 0;
      double endY = 0;
      LineEndPoint(object, endX, endY);
      rects[0] = PaintLabel(canvas, OnCanvas(object.x, object.y), OnCanvas(endX, endY),
                            kLengthOffset, ValueText(u"L ", object.size), kLabelColour);
      break;
    }
    case kTypeCircle: {
      const double r = object.size / 2;
      rects[0] =
          PaintLabel(canvas, OnCanvas(object.x - r, object.y), OnCanvas(object.x + r, object.y),
                     kLengthOffset, ValueText(u"\u00D8 ", object.size), kLabelColour);
      break;
    }
    case kTypeRectangle:
    case kTypeSlot:
      PaintBoxLabels(canvas, object, rects);
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
  FillArea(canvas, Rect{x - 3, y - 3, x + 4, y + 4}, kMeasureColour);
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
  PaintLabel(canvas, picks[0], picks[1], kMeasureOffset,
             ValueText(u"REF ", SketchRoot(dx * dx + dy * dy)), kMeasureColour);
}

}  // namespace

void PaintDimensions(platform::Canvas& canvas) {
  ForgetDimensionLabels();
  if (!tools.dimensionMode && tools.constructionMethod == 0) return;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!sketch.hidden[i]) PaintObjectLabels(canvas, sketch.objects[i], labels[i]);
  }
  if (tools.measureMode) PaintMeasure(canvas);
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
