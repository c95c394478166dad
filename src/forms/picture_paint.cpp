// Painting a picture: its lines in batches of one ink, its labels above them.

#include <algorithm>
#include <cmath>

#include "app/palette.h"
#include "forms/picture_parts.h"
#include "platform/canvas.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::Colour;
using platform::Pen;
using platform::PointF;
using platform::Rect;
using platform::Segment;

constexpr InkStyle kStyles[] = {
    {u"face", kPictureFace},
    {u"opening", kPictureOpening},
    {u"pocket", kPicturePocket},
    {u"dark", kPictureShadeDark},
    {u"mid", kPictureShadeMid},
    {u"light", kPictureShadeLight},
    {u"stock", kPictureStock, 1, false, true},
    {u"construction", kPictureConstruction, 1, true, true},
    {u"hidden", kPictureHidden},
    {u"outline", kPictureOutline, 1, false, true},
    {u"feature", kPictureFeature, 1, false, true},
    {u"blind", kPictureBlind, 1, false, true},
    {u"dimension", kPictureDimension},
    {u"selected", kPictureSelected, 2, false, true},
};
static_assert(std::size(kStyles) == kInks);

constexpr double kGapPerDash = 2 / 3.0;
constexpr double kLongestDashed = 1e10;  // pixels; beyond it numbers are too coarse for dashes
// Smooth edges cost several times as much as plain ones. Pictures with few lines are smooth.
constexpr std::size_t kSmoothLines = 4096;
constexpr double kSmoothLength = 60000;  // pixels, all lines together
constexpr double kUpright = 0.01;        // pixels off an axis at which a line counts as along it
constexpr double kHalf = 0.5;   // pixels from the middle of one, as of lines, to its corner
constexpr int kNoticeEdge = 8;  // pixels
constexpr const char16_t* kFullNotice = u"Picture full. Not everything is shown.";
constexpr const char16_t* kUnsoundNotice = u"A value is out of range. Not everything is shown.";

using Batches = std::vector<Segment>[kInks];

std::vector<Segment>& BatchOf(Batches& batches, Ink ink) {
  return batches[static_cast<std::size_t>(ink)];
}

// The piece of a line inside `area`, as fractions of its length; false for none.
bool InsidePiece(const Rect& area, const PointF& from, const PointF& to, double& first,
                 double& last) {
  const double steps[4] = {from.x - to.x, to.x - from.x, from.y - to.y, to.y - from.y};
  const double rooms[4] = {from.x - area.left, area.right - from.x, from.y - area.top,
                           area.bottom - from.y};
  first = 0;
  last = 1;
  for (int i = 0; i < 4; ++i) {
    if (steps[i] == 0 && rooms[i] < 0) return false;
    if (steps[i] > 0) last = std::min(last, rooms[i] / steps[i]);
    if (steps[i] < 0) first = std::max(first, rooms[i] / steps[i]);
  }
  return first <= last;
}

// A line along an axis that lies between two rows of pixels would be spread over both where edges
// are smooth. On a screen it is moved to where a plain line would lie: into the middle of a row, or
// of two for a pen of two.
void AddLineOn(const PictureView& view, Ink ink, const PointF& from, const PointF& to,
               std::vector<Segment>& batch) {
  PointF a = from;
  PointF b = to;
  const bool wide = StyleOf(ink).width % 2 == 0;
  const auto crisp = [wide](double at) { return wide ? std::floor(at) + 0.5 : std::round(at); };
  if (!view.paper && std::fabs(a.x - b.x) < kUpright) a.x = b.x = crisp(a.x);
  if (!view.paper && std::fabs(a.y - b.y) < kUpright) a.y = b.y = crisp(a.y);
  batch.push_back(platform::SegmentOf(a, b));
}

// Dashes run on around corners. Only those inside the area are made, however long the line.
void AppendDashes(const PictureView& view, Ink ink, const Chain& chain,
                  std::vector<Segment>& batch) {
  const double period = view.dash * (1 + kGapPerDash);
  double run = 0;  // pixels behind, less whole periods
  for (std::size_t i = 1; i < chain.points.size(); ++i) {
    const PointF from = chain.points[i - 1];
    const PointF to = chain.points[i];
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    double first = 0;
    double last = 1;
    if (length > kLongestDashed) {
      batch.push_back(platform::SegmentOf(from, to));
    } else if (length > 0 && InsidePiece(view.area, from, to, first, last)) {
      const auto at = [&](double place) {
        const double t = std::clamp(place / length, first, last);
        return PointF{from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t};
      };
      double dash = std::floor((first * length + run) / period) * period - run;
      for (; dash < last * length; dash += period) {
        if (dash + view.dash <= first * length) continue;
        if (chain.curved[i] != 0) {
          batch.push_back(platform::SegmentOf(at(dash), at(dash + view.dash)));
        } else {
          AddLineOn(view, ink, at(dash), at(dash + view.dash), batch);
        }
      }
    }
    run = std::fmod(run + length, period);
  }
}

void AppendChain(const PictureView& view, Ink ink, const Chain& chain,
                 std::vector<Segment>& batch) {
  const std::vector<PointF>& points = chain.points;
  if (points.size() == 1) AddLineOn(view, ink, points[0], points[0], batch);
  if (StyleOf(ink).dashed) {
    AppendDashes(view, ink, chain, batch);
    return;
  }
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (chain.curved[i] != 0) {
      batch.push_back(platform::SegmentOf(points[i - 1], points[i]));
    } else {
      AddLineOn(view, ink, points[i - 1], points[i], batch);
    }
  }
}

PointF PlaceOfCross(const Picture& picture, const PictureMark& mark, const PictureView& view) {
  const PicturePoint& at = picture.points[static_cast<std::size_t>(mark.first)];
  return OnView(view, at.x, at.y);
}

void AppendCross(const Picture& picture, const PictureMark& mark, const PictureView& view,
                 std::vector<Segment>& batch) {
  const PointF at = PlaceOfCross(picture, mark, view);
  AddLineOn(view, mark.ink, {at.x - view.crossX, at.y}, {at.x + view.crossX, at.y}, batch);
  AddLineOn(view, mark.ink, {at.x, at.y - view.crossY}, {at.x, at.y + view.crossY}, batch);
}

bool CanBeSmooth(const Batches& batches) {
  std::size_t count = 0;
  double length = 0;
  for (const std::vector<Segment>& batch : batches) {
    count += batch.size();
    if (count > kSmoothLines) return false;
    for (const Segment& s : batch) {
      length +=
          std::fabs(static_cast<double>(s.x1 - s.x0)) + std::fabs(static_cast<double>(s.y1 - s.y0));
    }
  }
  return length <= kSmoothLength;
}

// Paints and empties the batches, in the order of the inks.
void PaintBatches(Canvas& canvas, Batches& batches) {
  const bool smooth = CanBeSmooth(batches);
  for (std::size_t i = 0; i < kInks; ++i) {
    std::vector<Segment>& batch = batches[i];
    if (batch.empty()) continue;
    Pen pen;
    pen.colour = kStyles[i].colour;
    pen.width = kStyles[i].width;
    pen.smooth = smooth;
    platform::PaintSegments(canvas, batch.data(), static_cast<int>(batch.size()), pen);
    batch.clear();
  }
}

void PaintFill(Canvas& canvas, const Picture& picture, const PictureMark& mark,
               const PictureView& view, Chain& chain) {
  ChainOf(picture, mark, view, chain);
  platform::FillPolygon(canvas, chain.points.data(), static_cast<int>(chain.points.size()),
                        StyleOf(mark.ink).colour);
}

void PaintMarks(Canvas& canvas, const Picture& picture, const PictureView& view, Batches& batches) {
  static Chain chain;
  for (const PictureMark& mark : picture.marks) {
    if (mark.kind == MarkKind::Layer) {
      PaintBatches(canvas, batches);
    } else if (IsFilled(mark)) {
      PaintFill(canvas, picture, mark, view, chain);
    } else if (mark.kind == MarkKind::Cross) {
      AppendCross(picture, mark, view, BatchOf(batches, mark.ink));
    } else {
      ChainOf(picture, mark, view, chain);
      AppendChain(view, mark.ink, chain, BatchOf(batches, mark.ink));
    }
  }
  PaintBatches(canvas, batches);
}

void PaintLabels(Canvas& canvas, Picture& picture, const PictureView& view, Batches& batches) {
  const std::vector<Rect>& plates = PlacedLabels(picture, view);
  static std::vector<LeadLines> leads;
  leads.clear();
  for (std::size_t i = 0; i < plates.size(); ++i) {
    const PictureLabel& label = picture.labels[i];
    leads.push_back(LeadLinesOf(picture, view, label, plates[i]));
    const LeadLines& lead = leads.back();
    for (int k = 0; k < lead.lineCount; ++k) {
      AddLineOn(view, label.spec.ink, lead.lines[k][0], lead.lines[k][1],
                BatchOf(batches, label.spec.ink));
    }
  }
  PaintBatches(canvas, batches);
  for (std::size_t i = 0; i < plates.size(); ++i) {
    const PictureLabel& label = picture.labels[i];
    const Colour colour = StyleOf(label.spec.ink).colour;
    for (int k = 0; k < leads[i].arrowCount; ++k) {
      PointF head[3];
      for (int c = 0; c < 3; ++c) {
        head[c] = {leads[i].arrows[k][c].x + kHalf, leads[i].arrows[k][c].y + kHalf};
      }
      platform::PaintPolygon(canvas, head, 3, colour, Pen{colour, 1, false, true});
    }
  }
  for (std::size_t i = 0; i < plates.size(); ++i) {
    const PictureLabel& label = picture.labels[i];
    platform::PaintLabel(canvas, plates[i], label.words, kPictureFont,
                         StyleOf(label.spec.ink).colour, kPictureGround,
                         platform::kAlignCentre | platform::kAlignMiddle);
  }
}

void PaintNotice(Canvas& canvas, const Picture& picture, const Rect& area) {
  if (!picture.full && !picture.unsound) return;
  const char16_t* words = picture.full ? kFullNotice : kUnsoundNotice;
  Rect place;
  place.left = area.left + kNoticeEdge;
  place.right = std::min(place.left + platform::TextWidth(kPictureFont, words) + 2, area.right);
  place.bottom = area.bottom - kNoticeEdge;
  place.top = place.bottom - platform::TextHeight(kPictureFont);
  platform::FillArea(canvas, place, kPictureGround);
  platform::PaintText(canvas, place, words, kPictureFont, kPictureSelected,
                      platform::kAlignLeft | platform::kAlignMiddle);
}

void PaintOnPaper(Canvas& canvas, const Picture& picture, const PictureView& view) {
  Pen pen;
  pen.colour = kPaperInk;
  pen.width = view.pen;
  Chain chain;
  std::vector<Segment> pieces;  // of dashes and crosses
  for (const PictureMark& mark : picture.marks) {
    if (mark.kind == MarkKind::Layer || IsFilled(mark) || !StyleOf(mark.ink).onPaper) continue;
    if (mark.kind == MarkKind::Cross) {
      AppendCross(picture, mark, view, pieces);
      continue;
    }
    const bool dashed = StyleOf(mark.ink).dashed;
    if (mark.kind == MarkKind::Arc && !dashed) {
      const PictureArc& arc = picture.arcs[static_cast<std::size_t>(mark.first)];
      if (IsWhole(arc)) {
        platform::PaintEllipse(canvas, OnView(view, arc.x, arc.y), arc.radiusX * view.scaleX,
                               arc.radiusY * view.scaleY, pen);
        continue;
      }
    }
    ChainOf(picture, mark, view, chain);
    if (dashed || chain.points.size() < 2) {
      AppendChain(view, mark.ink, chain, pieces);
    } else {
      platform::PaintPolyline(canvas, chain.points.data(), static_cast<int>(chain.points.size()),
                              pen);
    }
  }
  if (pieces.empty()) return;
  platform::PaintSegments(canvas, pieces.data(), static_cast<int>(pieces.size()), pen);
}

}  // namespace

const InkStyle& StyleOf(Ink ink) { return kStyles[static_cast<std::size_t>(ink)]; }

bool PaintPicture(Canvas& canvas, Picture& picture, const PictureView& view) {
  if (!IsSound(view)) return false;
  if (view.paper && (picture.full || picture.unsound)) return false;
  static Batches batches;
  platform::PushClip(canvas, view.area);
  if (view.paper) {
    PaintOnPaper(canvas, picture, view);
  } else {
    platform::FillArea(canvas, view.area, kPictureGround);
    PaintMarks(canvas, picture, view, batches);
    PaintLabels(canvas, picture, view, batches);
    PaintNotice(canvas, picture, view.area);
  }
  platform::PopClip(canvas);
  return true;
}

}  // namespace morva
