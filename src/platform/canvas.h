// What a view paints with. Each platform defines Canvas; the headless one records the calls.
//
// Coordinates are pixels of the view or control being drawn, with fractions where a double is
// taken. Lines are drawn centred on their coordinates; whole ones are the middles of pixels for
// plain lines and for segments, and their corners for all else that is smooth. Nothing here keeps
// a pen or a brush: colours and widths come with each call.
#pragma once

#include <string_view>

#include "platform/geometry.h"

namespace platform {

struct Canvas;

struct Pen {
  Colour colour = 0;
  int width = 1;        // pixels
  bool dashed = false;
  bool smooth = false;  // smoothed edges
};

struct Segment {
  float x0 = 0;
  float y0 = 0;
  float x1 = 0;
  float y1 = 0;
};
inline Segment SegmentOf(PointF from, PointF to) {
  return {static_cast<float>(from.x), static_cast<float>(from.y), static_cast<float>(to.x),
          static_cast<float>(to.y)};
}

enum TextAlign : unsigned {
  kAlignLeft = 0,
  kAlignCentre = 1,
  kAlignRight = 2,
  kAlignTop = 0,
  kAlignMiddle = 4,
  kAlignBottom = 8,
  kTextEllipsis = 16,  // what does not fit ends in an ellipsis
  kTextWrap = 32,      // breaks at blanks and line ends
};

Rect CanvasArea(const Canvas& canvas);
void FillArea(Canvas& canvas, const Rect& area, Colour colour);
// Vertical gradient from `top` to `bottom`.
void FillGradient(Canvas& canvas, const Rect& area, Colour top, Colour bottom);
void FrameArea(Canvas& canvas, const Rect& area, const Pen& pen);  // inside the rectangle
void PaintLine(Canvas& canvas, PointF from, PointF to, const Pen& pen);
void PaintPolyline(Canvas& canvas, const PointF* points, int count, const Pen& pen);
void FillPolygon(Canvas& canvas, const PointF* points, int count, Colour colour);
// Outline in `pen` around a fill; for smooth icons.
void PaintPolygon(Canvas& canvas, const PointF* points, int count, Colour fill, const Pen& pen);
void PaintEllipse(Canvas& canvas, PointF centre, double radiusX, double radiusY, const Pen& pen);
void FillEllipse(Canvas& canvas, PointF centre, double radiusX, double radiusY, Colour colour);
// Many separate segments in one opaque pen of width 1 or 2, made for whole toolpaths. Where they
// lie over each other the colour is not laid on twice, smooth edges included. Segments may lie far
// outside the canvas. On a screen with several device pixels to a pixel they are always smooth.
void PaintSegments(Canvas& canvas, const Segment* segments, int count, const Pen& pen);
void PaintText(Canvas& canvas, const Rect& area, std::u16string_view text, FontRole font,
               Colour colour, unsigned align);
// Words on a ground of their own: FillArea, then PaintText inside it. Words that come again in the
// same look cost a fraction of both.
void PaintLabel(Canvas& canvas, const Rect& area, std::u16string_view text, FontRole font,
                Colour colour, Colour ground, unsigned align);
int TextWidth(FontRole font, std::u16string_view text);
int TextHeight(FontRole font);
// Drawing is kept inside `area` until the matching PopClip; clips nest.
void PushClip(Canvas& canvas, const Rect& area);
void PopClip(Canvas& canvas);

}  // namespace platform
