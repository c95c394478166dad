// What lies at a pixel of a picture.

#include <algorithm>
#include <cmath>

#include "forms/picture_parts.h"

namespace morva {

namespace {

using platform::PointF;
using platform::Rect;

constexpr double kSame = 0.001;  // pixels; distances that differ by less are equal

// The nearest line so far. Later in the painting: a higher layer, then a later ink, then a later
// record.
struct Nearest {
  double distance = 0;
  int layer = -1;
  Ink ink = Ink::Face;
  int part = kNoPart;
};

void Offer(Nearest& nearest, const Nearest& other) {
  if (other.distance > nearest.distance + kSame) return;
  const bool same = other.distance > nearest.distance - kSame;
  const bool later =
      other.layer != nearest.layer ? other.layer > nearest.layer : other.ink >= nearest.ink;
  if (same && !later && nearest.part != kNoPart) return;
  nearest = other;
}

double DistanceToPiece(const PointF& at, const PointF& from, const PointF& to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double square = dx * dx + dy * dy;
  double t = 0;
  if (square > 0) {
    t = std::clamp(((at.x - from.x) * dx + (at.y - from.y) * dy) / square, 0.0, 1.0);
  }
  return std::hypot(at.x - from.x - dx * t, at.y - from.y - dy * t);
}

double DistanceToChain(const PointF& at, const Chain& chain) {
  const std::vector<PointF>& points = chain.points;
  double least = std::hypot(at.x - points[0].x, at.y - points[0].y);
  for (std::size_t i = 1; i < points.size(); ++i) {
    least = std::min(least, DistanceToPiece(at, points[i - 1], points[i]));
  }
  return least;
}

bool IsAround(const Chain& chain, const PointF& at) {
  bool inside = false;
  for (std::size_t i = 1; i < chain.points.size(); ++i) {
    const PointF& a = chain.points[i - 1];
    const PointF& b = chain.points[i];
    if ((a.y > at.y) == (b.y > at.y)) continue;
    if (at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y)) inside = !inside;
  }
  return inside;
}

// Measures a whole circle by its radius: the chords that draw it are off by a part of a pixel.
bool IsCircleOn(const Picture& picture, const PictureMark& mark, const PictureView& view) {
  if (mark.kind != MarkKind::Arc) return false;
  const PictureArc& arc = picture.arcs[static_cast<std::size_t>(mark.first)];
  return IsWhole(arc) && arc.radiusX == arc.radiusY && view.scaleX == view.scaleY;
}

double DistanceToLine(const Picture& picture, const PictureMark& mark, const PictureView& view,
                      const PointF& at, Chain& chain) {
  if (IsCircleOn(picture, mark, view)) {
    const PictureArc& arc = picture.arcs[static_cast<std::size_t>(mark.first)];
    const PointF centre = OnView(view, arc.x, arc.y);
    return std::fabs(std::hypot(at.x - centre.x, at.y - centre.y) - arc.radiusX * view.scaleX);
  }
  if (mark.kind == MarkKind::Cross) {
    const PicturePoint& point = picture.points[static_cast<std::size_t>(mark.first)];
    const PointF middle = OnView(view, point.x, point.y);
    return std::min(
        DistanceToPiece(at, {middle.x - view.crossX, middle.y}, {middle.x + view.crossX, middle.y}),
        DistanceToPiece(at, {middle.x, middle.y - view.crossY},
                        {middle.x, middle.y + view.crossY}));
  }
  ChainOf(picture, mark, view, chain);
  return DistanceToChain(at, chain);
}

// Bounds that hold a mark and are quick to find. A bent side is nowhere farther from its first
// corner than its chord, times its bulge where that is above 1.
PictureBounds LooseBounds(const Picture& picture, const PictureMark& mark) {
  PictureBounds bounds;
  bool any = false;
  if (mark.kind == MarkKind::Arc || mark.kind == MarkKind::Disc) {
    const PictureArc& arc = picture.arcs[static_cast<std::size_t>(mark.first)];
    return {arc.x - arc.radiusX, arc.y - arc.radiusY, arc.x + arc.radiusX, arc.y + arc.radiusY};
  }
  const PicturePoint* corners = &picture.points[static_cast<std::size_t>(mark.first)];
  for (int i = 0; i < mark.count; ++i) {
    const PicturePoint& from = corners[i];
    const PicturePoint& to = corners[(i + 1) % mark.count];
    double out = 0;
    if (from.bulge != 0) {
      out = (std::fabs(to.x - from.x) + std::fabs(to.y - from.y)) *
            std::max(std::fabs(from.bulge), 1.0);
    }
    TakeInPoint(from.x - out, from.y - out, bounds, any);
    TakeInPoint(from.x + out, from.y + out, bounds, any);
  }
  return bounds;
}

// A mark whose bounds are farther away than `reach` has no line within it.
bool MayReach(const Picture& picture, const PictureMark& mark, const PictureView& view,
              const PointF& at, double reach) {
  const PictureBounds bounds = LooseBounds(picture, mark);
  const PointF low = OnView(view, bounds.minX, bounds.minY);
  const PointF high = OnView(view, bounds.maxX, bounds.maxY);
  const bool cross = mark.kind == MarkKind::Cross;
  const double outX = reach + (cross ? view.crossX : 0);
  const double outY = reach + (cross ? view.crossY : 0);
  return at.x >= low.x - outX && at.x <= high.x + outX && at.y >= high.y - outY &&
         at.y <= low.y + outY;
}

int TopLabel(Picture& picture, const PictureView& view, int x, int y, bool withPart) {
  const std::vector<Rect>& plates = PlacedLabels(picture, view);
  for (std::size_t i = plates.size(); i-- > 0;) {
    if (withPart && picture.labels[i].spec.part == kNoPart) continue;
    if (platform::RectHolds(plates[i], x, y)) return static_cast<int>(i);
  }
  return -1;
}

// The lines of dimensions lie above all layers.
void OfferLeads(Picture& picture, const PictureView& view, const PointF& at, int layer,
                Nearest& nearest) {
  const std::vector<Rect>& plates = PlacedLabels(picture, view);
  for (std::size_t i = 0; i < plates.size(); ++i) {
    const PictureLabel& label = picture.labels[i];
    if (label.spec.part == kNoPart) continue;
    const LeadLines lead = LeadLinesOf(picture, view, label, plates[i]);
    for (int k = 0; k < lead.lineCount; ++k) {
      Offer(nearest, {DistanceToPiece(at, lead.lines[k][0], lead.lines[k][1]), layer,
                      label.spec.ink, label.spec.part});
    }
  }
}

}  // namespace

int PartAt(Picture& picture, const PictureView& view, int x, int y, int reach) {
  if (!IsSound(view)) return kNoPart;
  if (!view.paper) {
    const int label = TopLabel(picture, view, x, y, true);
    if (label >= 0) return picture.labels[static_cast<std::size_t>(label)].spec.part;
  }
  const PointF at{static_cast<double>(x), static_cast<double>(y)};
  Nearest nearest;
  nearest.distance = reach;
  int filled = kNoPart;
  int layer = 0;
  Chain chain;
  for (const PictureMark& mark : picture.marks) {
    if (mark.kind == MarkKind::Layer) ++layer;
    if (mark.part == kNoPart || mark.kind == MarkKind::Layer) continue;
    if (!MayReach(picture, mark, view, at, IsFilled(mark) ? 0 : nearest.distance + kSame)) continue;
    if (IsFilled(mark)) {
      ChainOf(picture, mark, view, chain);
      if (IsAround(chain, at)) filled = mark.part;
      continue;
    }
    Offer(nearest, {DistanceToLine(picture, mark, view, at, chain), layer, mark.ink, mark.part});
  }
  if (!view.paper) OfferLeads(picture, view, at, layer + 1, nearest);
  return nearest.part != kNoPart ? nearest.part : filled;
}

int LabelAt(Picture& picture, const PictureView& view, int x, int y) {
  if (!IsSound(view) || view.paper) return -1;
  return TopLabel(picture, view, x, y, false);
}

}  // namespace morva
