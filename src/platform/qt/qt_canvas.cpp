// The canvas over the toolkit's painter; whole toolpaths go straight into the pixels.

#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/canvas.h"
#include "platform/common/segment_raster.h"
#include "platform/common/smooth_raster.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

QPen PenOf(const Pen& pen) {
  QPen out(ColourOf(pen.colour), pen.width);
  out.setStyle(pen.dashed ? Qt::DashLine : Qt::SolidLine);
  out.setCapStyle(pen.smooth ? Qt::RoundCap : Qt::SquareCap);
  out.setJoinStyle(pen.smooth ? Qt::RoundJoin : Qt::MiterJoin);
  return out;
}

void Prepare(Canvas& canvas, const Pen& pen) {
  canvas.painter->setRenderHint(QPainter::Antialiasing, pen.smooth);
  canvas.painter->setPen(PenOf(pen));
  canvas.painter->setBrush(Qt::NoBrush);
}

QPolygonF PolygonOf(const PointF* points, int count) {
  QPolygonF polygon;
  polygon.reserve(count);
  for (int i = 0; i < count; ++i) polygon.append(QPointF(points[i].x, points[i].y));
  return polygon;
}

void PaintSegmentsByPainter(Canvas& canvas, const Segment* segments, int count, const Pen& pen) {
  Prepare(canvas, pen);
  // The painter takes whole coordinates for the corners of pixels where edges are smooth.
  const double shift = pen.smooth ? 0.5 : 0;
  std::vector<QLineF> lines;
  lines.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const Segment& s = segments[i];
    lines.emplace_back(static_cast<double>(s.x0) + shift, static_cast<double>(s.y0) + shift,
                       static_cast<double>(s.x1) + shift, static_cast<double>(s.y1) + shift);
  }
  canvas.painter->drawLines(lines.data(), count);
}

// On a screen with several device pixels to a pixel the segments grow with it; whole
// coordinates stay the middles of pixels.
const Segment* Scaled(const Canvas& canvas, const Segment* segments, int count) {
  static std::vector<Segment> kept;
  const float scale = static_cast<float>(canvas.scale);
  const float shift = (scale - 1) / 2;
  kept.resize(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const Segment& s = segments[i];
    kept[static_cast<std::size_t>(i)] = Segment{s.x0 * scale + shift, s.y0 * scale + shift,
                                                s.x1 * scale + shift, s.y1 * scale + shift};
  }
  return kept.data();
}

// A font in pixels of paper.
QFont Grown(const QFont& font, double scale) {
  QFont grown = font;
  grown.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * scale))));
  return grown;
}

int FlagsOf(unsigned align) {
  int flags = (align & kAlignCentre) != 0  ? Qt::AlignHCenter
              : (align & kAlignRight) != 0 ? Qt::AlignRight
                                           : Qt::AlignLeft;
  flags |= (align & kAlignMiddle) != 0   ? Qt::AlignVCenter
           : (align & kAlignBottom) != 0 ? Qt::AlignBottom
                                         : Qt::AlignTop;
  flags |= (align & kTextWrap) != 0 ? Qt::TextWordWrap : Qt::TextSingleLine;
  return flags;
}

}  // namespace

// Device pixels inside the canvas and its clips.
Rect DeviceClip(const Canvas& canvas) {
  QRectF clip(0, 0, canvas.width, canvas.height);
  if (canvas.painter->hasClipping()) {
    const QRectF asked = canvas.painter->clipBoundingRect();
    clip &= QRectF(asked.topLeft() * canvas.scale, asked.size() * canvas.scale);
  }
  return RectFrom(clip.toRect());
}

Rect CanvasArea(const Canvas& canvas) { return canvas.area; }

void FillArea(Canvas& canvas, const Rect& area, Colour colour) {
  canvas.painter->fillRect(RectOf(area), ColourOf(colour));
}

void FillGradient(Canvas& canvas, const Rect& area, Colour top, Colour bottom) {
  QLinearGradient gradient(0, area.top, 0, area.bottom);
  gradient.setColorAt(0, ColourOf(top));
  gradient.setColorAt(1, ColourOf(bottom));
  canvas.painter->fillRect(RectOf(area), gradient);
}

void FrameArea(Canvas& canvas, const Rect& area, const Pen& pen) {
  if (pen.dashed) {
    Prepare(canvas, pen);
    canvas.painter->drawRect(RectOf(area).adjusted(0, 0, -1, -1));
    return;
  }
  const int w = pen.width;
  FillArea(canvas, Rect{area.left, area.top, area.right, area.top + w}, pen.colour);
  FillArea(canvas, Rect{area.left, area.bottom - w, area.right, area.bottom}, pen.colour);
  FillArea(canvas, Rect{area.left, area.top + w, area.left + w, area.bottom - w}, pen.colour);
  FillArea(canvas, Rect{area.right - w, area.top + w, area.right, area.bottom - w}, pen.colour);
}

void PaintLine(Canvas& canvas, PointF from, PointF to, const Pen& pen) {
  Prepare(canvas, pen);
  canvas.painter->drawLine(QPointF(from.x, from.y), QPointF(to.x, to.y));
}

void PaintPolyline(Canvas& canvas, const PointF* points, int count, const Pen& pen) {
  if (count < 2) return;
  Prepare(canvas, pen);
  canvas.painter->drawPolyline(PolygonOf(points, count));
}

void FillPolygon(Canvas& canvas, const PointF* points, int count, Colour colour) {
  if (count < 3) return;
  canvas.painter->setRenderHint(QPainter::Antialiasing, false);
  canvas.painter->setPen(Qt::NoPen);
  canvas.painter->setBrush(ColourOf(colour));
  canvas.painter->drawPolygon(PolygonOf(points, count));
}

void PaintPolygon(Canvas& canvas, const PointF* points, int count, Colour fill, const Pen& pen) {
  if (count < 3) return;
  Prepare(canvas, pen);
  canvas.painter->setBrush(ColourOf(fill));
  canvas.painter->drawPolygon(PolygonOf(points, count));
}

void PaintEllipse(Canvas& canvas, PointF centre, double radiusX, double radiusY, const Pen& pen) {
  Prepare(canvas, pen);
  canvas.painter->drawEllipse(QPointF(centre.x, centre.y), radiusX, radiusY);
}

void FillEllipse(Canvas& canvas, PointF centre, double radiusX, double radiusY, Colour colour) {
  canvas.painter->setRenderHint(QPainter::Antialiasing, true);
  canvas.painter->setPen(Qt::NoPen);
  canvas.painter->setBrush(ColourOf(colour));
  canvas.painter->drawEllipse(QPointF(centre.x, centre.y), radiusX, radiusY);
}

void PaintSegments(Canvas& canvas, const Segment* segments, int count, const Pen& pen) {
  if (count <= 0) return;
  if (canvas.pixels == nullptr || pen.dashed) {
    PaintSegmentsByPainter(canvas, segments, count, pen);
    return;
  }
  // Hard lines are one or two device pixels thick, which is as told at scale 1 alone.
  if (canvas.scale == 1 && !pen.smooth) {
    RasteriseSegments(canvas.pixels, canvas.stride, canvas.width, canvas.height, DeviceClip(canvas),
                      segments, count, pen.colour, pen.width);
    return;
  }
  BlendSegments(canvas.pixels, canvas.stride, canvas.width, canvas.height, DeviceClip(canvas),
                canvas.scale == 1 ? segments : Scaled(canvas, segments, count), count, pen.colour,
                pen.width * canvas.scale);
}

void PaintText(Canvas& canvas, const Rect& area, std::u16string_view text, FontRole font,
               Colour colour, unsigned align) {
  QString words = Text(text);
  const QFont shown = canvas.textScale == 1 ? FontOf(font) : Grown(FontOf(font), canvas.textScale);
  if ((align & kTextEllipsis) != 0 && (align & kTextWrap) == 0) {
    const QFontMetrics metrics =
        canvas.textScale == 1 ? MetricsOf(font) : QFontMetrics(shown, canvas.painter->device());
    words = metrics.elidedText(words, Qt::ElideRight, RectWidth(area));
  }
  canvas.painter->setFont(shown);
  canvas.painter->setPen(ColourOf(colour));
  canvas.painter->drawText(RectOf(area), FlagsOf(align), words);
}

void PushClip(Canvas& canvas, const Rect& area) {
  canvas.painter->save();
  canvas.painter->setClipRect(RectOf(area), Qt::IntersectClip);
}

void PopClip(Canvas& canvas) { canvas.painter->restore(); }

}  // namespace platform
