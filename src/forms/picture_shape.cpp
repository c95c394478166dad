// The geometry of a picture's marks: bounds in the drawing, chords on a view.

#include <algorithm>
#include <cmath>

#include "forms/picture_parts.h"
#include "text/series_trig.h"

namespace morva {

namespace {

using platform::PointF;

constexpr double kLeastBulge = 1e-9;  // a side with less is straight
constexpr double kLeastRadius = 0.5;  // pixels; a smaller arc gets no fewer chords

// Chords that keep within `error` pixels of an arc: the height of a chord over an angle d is at
// most r d d / 8.
int ChordCount(const ArcPiece& piece, const PictureView& view) {
  const double error = view.paper ? kPaperChord : kScreenChord;
  const double radius =
      std::max({piece.radiusX * view.scaleX, piece.radiusY * view.scaleY, kLeastRadius});
  const double step = std::sqrt(8 * error / radius);
  const double count = std::ceil(std::fabs(piece.sweep) * kRadiansPerDegree / step);
  return static_cast<int>(std::clamp(count, 1.0, static_cast<double>(kMaxArcChords)));
}

void Append(Chain& chain, const PointF& point, bool curved) {
  chain.points.push_back(point);
  chain.curved.push_back(curved ? 1 : 0);
}

PointF PlaceOn(const ArcPiece& piece, const PictureView& view, double x, double y) {
  return OnView(view, piece.x + piece.radiusX * x, piece.y + piece.radiusY * y);
}

// The points of an arc between its ends.
void AppendArc(const ArcPiece& piece, const PictureView& view, Chain& chain) {
  const int count = ChordCount(piece, view);
  // One turn of the direction for each chord costs less than a sine and a cosine for each.
  const double turn = piece.sweep * kRadiansPerDegree / count;
  const double c = std::cos(turn);
  const double s = std::sin(turn);
  double x = CosineOf(piece.start);
  double y = SineOf(piece.start);
  for (int i = 1; i < count; ++i) {
    const double next = x * c - y * s;
    y = x * s + y * c;
    x = next;
    Append(chain, PlaceOn(piece, view, x, y), true);
  }
}

ArcPiece PieceOf(const PictureArc& arc) {
  return {arc.x, arc.y, arc.radiusX, arc.radiusY, arc.start, arc.sweep};
}

const PictureArc& ArcOf(const Picture& picture, const PictureMark& mark) {
  return picture.arcs[static_cast<std::size_t>(mark.first)];
}

void TakeInPiece(const ArcPiece& piece, PictureBounds& bounds, bool& any) {
  const double from = std::min(piece.start, piece.start + piece.sweep);
  const double to = std::max(piece.start, piece.start + piece.sweep);
  for (double quarter = std::ceil(from / 90) * 90; quarter <= to; quarter += 90) {
    TakeInPoint(piece.x + piece.radiusX * CosineOf(quarter),
                piece.y + piece.radiusY * SineOf(quarter), bounds, any);
  }
  for (const double end : {from, to}) {
    TakeInPoint(piece.x + piece.radiusX * CosineOf(end), piece.y + piece.radiusY * SineOf(end),
                bounds, any);
  }
}

}  // namespace

double CosineOf(double degrees) {
  double exact = 0;
  if (QuarterCosine(degrees, exact)) return exact;
  return std::cos(std::fmod(std::fabs(degrees), 360) * kRadiansPerDegree);
}

bool PieceOfSide(const PicturePoint& from, const PicturePoint& to, ArcPiece& piece) {
  const double b = from.bulge;
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double chord = std::hypot(dx, dy);
  if (std::fabs(b) < kLeastBulge || chord == 0) return false;
  const double lift = (1 - b * b) / (4 * b);  // of the centre to the left, in chords
  piece.x = (from.x + to.x) / 2 - dy * lift;
  piece.y = (from.y + to.y) / 2 + dx * lift;
  piece.radiusX = piece.radiusY = chord * (1 + b * b) / (4 * std::fabs(b));
  piece.start = std::atan2(from.y - piece.y, from.x - piece.x) / kRadiansPerDegree;
  piece.sweep = 4 * std::atan(b) / kRadiansPerDegree;
  return true;
}

void ChainOf(const Picture& picture, const PictureMark& mark, const PictureView& view,
             Chain& chain) {
  chain.points.clear();
  chain.curved.clear();
  if (!HasCorners(mark)) {
    ArcPiece piece = PieceOf(ArcOf(picture, mark));
    if (mark.kind == MarkKind::Disc) piece.sweep = 360;
    const double end = piece.start + piece.sweep;
    Append(chain, PlaceOn(piece, view, CosineOf(piece.start), SineOf(piece.start)), true);
    AppendArc(piece, view, chain);
    Append(chain, PlaceOn(piece, view, CosineOf(end), SineOf(end)), true);
    return;
  }
  const PicturePoint* corners = &picture.points[static_cast<std::size_t>(mark.first)];
  Append(chain, OnView(view, corners[0].x, corners[0].y), false);
  const int sides = IsClosed(mark) ? mark.count : mark.count - 1;
  for (int i = 0; i < sides; ++i) {
    const PicturePoint& to = corners[(i + 1) % mark.count];
    ArcPiece piece;
    const bool bent = corners[i].bulge != 0 && PieceOfSide(corners[i], to, piece);
    if (bent) AppendArc(piece, view, chain);
    Append(chain, OnView(view, to.x, to.y), bent);
  }
}

void TakeInPoint(double x, double y, PictureBounds& bounds, bool& any) {
  if (!any) bounds = {x, y, x, y};
  any = true;
  bounds.minX = std::min(bounds.minX, x);
  bounds.minY = std::min(bounds.minY, y);
  bounds.maxX = std::max(bounds.maxX, x);
  bounds.maxY = std::max(bounds.maxY, y);
}

void TakeInMark(const Picture& picture, const PictureMark& mark, PictureBounds& bounds, bool& any) {
  if (mark.kind == MarkKind::Layer) return;
  if (mark.kind == MarkKind::Arc || mark.kind == MarkKind::Disc) {
    TakeInPiece(PieceOf(ArcOf(picture, mark)), bounds, any);
    return;
  }
  const PicturePoint* corners = &picture.points[static_cast<std::size_t>(mark.first)];
  const int sides = IsClosed(mark) ? mark.count : mark.count - 1;
  for (int i = 0; i < mark.count; ++i) {
    TakeInPoint(corners[i].x, corners[i].y, bounds, any);
    ArcPiece piece;
    if (i < sides && corners[i].bulge != 0 &&
        PieceOfSide(corners[i], corners[(i + 1) % mark.count], piece)) {
      TakeInPiece(piece, bounds, any);
    }
  }
}

}  // namespace morva
