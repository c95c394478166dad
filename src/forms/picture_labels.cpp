// Where the labels of a picture stand, and the lines that lead to them.

#include <algorithm>
#include <cmath>

#include "forms/picture_parts.h"

namespace morva {

namespace {

using platform::PointF;
using platform::Rect;

constexpr int kPadAcross = 4;  // pixels between the words and the edge of their ground
constexpr int kPadUpright = 1;
constexpr double kSideGap = 5;        // between a place and its label
constexpr double kRowPitch = 26;      // between rows of dimension lines, and to the first
constexpr double kExtensionGap = 3;   // between a point and its extension line
constexpr double kOvershoot = 4;      // of an extension line beyond the dimension line
constexpr double kArrow = 9;          // length of a head
constexpr double kArrowHalf = 2;      // half of its width
constexpr double kTail = 2 * kArrow;  // of a dimension line outside its extension lines
constexpr double kLeader = 18;        // from a circle to the end of its slanted leader
constexpr double kShoulder = 6;       // the level piece of a leader
constexpr double kSlideGap = 4;       // between a label and the place along its line that it left
constexpr double kFarthest = 1e7;     // pixels; what lies farther out is held there
constexpr int kLeadFrom = 2;          // times its gap, from which a label has a line to its place
constexpr int kTries = 13;            // places that a label is tried at, its usual one included
constexpr int kBandHeight = 32;       // pixels; labels are compared within bands of rows

PointF Sum(const PointF& p, const PointF& direction, double times) {
  return {p.x + direction.x * times, p.y + direction.y * times};
}

double Dot(const PointF& a, const PointF& b) { return a.x * b.x + a.y * b.y; }

PointF Unit(const PointF& v) {
  const double length = std::hypot(v.x, v.y);
  return length > 0 ? PointF{v.x / length, v.y / length} : PointF{1, 0};
}

PointF Held(const PointF& p) {
  return {std::clamp(p.x, -kFarthest, kFarthest), std::clamp(p.y, -kFarthest, kFarthest)};
}

PointF PlaceOf(const PictureView& view, double x, double y) { return Held(OnView(view, x, y)); }

struct Size {
  double width = 0;
  double height = 0;
};

Size SizeOf(const PictureLabel& label) {
  return {static_cast<double>(label.width + 2 * kPadAcross),
          static_cast<double>(platform::TextHeight(kPictureFont) + 2 * kPadUpright)};
}

Rect PlateAbout(const PointF& middle, const Size& size) {
  Rect plate;
  plate.left = static_cast<int>(std::lround(middle.x - size.width / 2));
  plate.top = static_cast<int>(std::lround(middle.y - size.height / 2));
  plate.right = plate.left + static_cast<int>(size.width);
  plate.bottom = plate.top + static_cast<int>(size.height);
  return plate;
}

PointF MiddleOf(const Rect& r) { return {(r.left + r.right) / 2.0, (r.top + r.bottom) / 2.0}; }

bool IsRound(const PictureDimension& d) {
  return d.way == DimensionWay::Diameter || d.way == DimensionWay::Radius;
}

// A linear dimension on a view: what it measures and the directions along and away from it.
struct Frame {
  PointF from, to;  // the measured points
  PointF along;     // of the dimension line
  PointF away;      // to the side of its row
  double side = 1;  // -1 for rows below 0
};

Frame FrameOf(const PictureView& view, const PictureDimension& d) {
  Frame frame;
  frame.from = PlaceOf(view, d.x0, d.y0);
  frame.to = PlaceOf(view, d.x1, d.y1);
  frame.side = d.row < 0 ? -1 : 1;
  if (d.way == DimensionWay::Upright) {
    frame.along = {0, 1};
    frame.away = {frame.side, 0};
    return frame;
  }
  frame.along = {1, 0};
  if (d.way == DimensionWay::Along) {
    frame.along = Unit({frame.to.x - frame.from.x, frame.to.y - frame.from.y});
  }
  frame.away = {frame.along.y * frame.side, -frame.along.x * frame.side};
  return frame;
}

// How far away from the origin, measured along `away`, a dimension's rows begin.
double BaseOf(const Picture& picture, const PictureView& view, const PictureDimension& d,
              const Frame& frame) {
  double base = std::max(Dot(frame.from, frame.away), Dot(frame.to, frame.away));
  PictureBounds bounds;
  if (!d.outside || !BoundsOfPicture(picture, bounds)) return base;
  for (const double x : {bounds.minX, bounds.maxX}) {
    for (const double y : {bounds.minY, bounds.maxY}) {
      base = std::max(base, Dot(PlaceOf(view, x, y), frame.away));
    }
  }
  return base;
}

// A label's size along a direction.
double Extent(const Size& size, const PointF& direction) {
  return size.width * std::fabs(direction.x) + size.height * std::fabs(direction.y);
}

// Tries along the line to both sides, then the same a row farther out.
Rect LinearPlate(const Picture& picture, const PictureView& view, const PictureDimension& d,
                 const Size& size, int attempt) {
  constexpr double kSlides[] = {0, 1, -1, 2, -2};
  const int further = attempt / 5;
  const Frame frame = FrameOf(view, d);
  const double from = Dot(frame.from, frame.along);
  const double to = Dot(frame.to, frame.along);
  const double extent = Extent(size, frame.along);
  double along = (from + to) / 2;
  if (extent > std::fabs(to - from)) {
    // Beyond the end that lies farther out: on the other side the next dimension often follows.
    PictureBounds bounds;
    double middle = std::min(from, to);
    if (BoundsOfPicture(picture, bounds)) {
      middle = Dot(PlaceOf(view, (bounds.minX + bounds.maxX) / 2, (bounds.minY + bounds.maxY) / 2),
                   frame.along);
    }
    const double out = std::fabs(to - from) / 2 + kTail + extent / 2;
    along += along < middle ? -out : out;
  }
  along += kSlides[attempt % 5] * (extent + kSlideGap);
  const double level = BaseOf(picture, view, d, frame) + (std::abs(d.row) + further) * kRowPitch;
  const PointF middle = Sum(Sum({0, 0}, frame.along, along), frame.away, level);
  return PlateAbout(middle, size);
}

// Beyond the leader's end; tries the other three quarters, then the same farther out.
Rect RoundPlate(const PictureView& view, const PictureDimension& d, const Size& size, int attempt) {
  const double angle = d.leader + 90.0 * (attempt % 4);
  const double reach = kLeader + attempt / 4 * 2 * size.height;
  const PointF end =
      Held(Sum(OnView(view, d.x0 + d.radius * CosineOf(angle), d.y0 + d.radius * SineOf(angle)),
               {CosineOf(angle), -SineOf(angle)}, reach));
  const double side = CosineOf(angle) < 0 ? -1 : 1;
  return PlateAbout({end.x + side * (kShoulder + size.width / 2), end.y}, size);
}

// Beside its place; tries the other sides in turn, then the same farther out.
Rect PlainPlate(const PictureView& view, const PictureLabel& label, const Size& size, int attempt) {
  const PointF at = PlaceOf(view, label.x, label.y);
  constexpr LabelSide kSides[] = {LabelSide::Above, LabelSide::Right, LabelSide::Below,
                                  LabelSide::Left};
  LabelSide side = label.spec.side;
  Size out{kSideGap, kSideGap};
  if (attempt > 0) {
    const bool on = side == LabelSide::On;
    side = kSides[((on ? 3 : static_cast<int>(side) - 1) + attempt) % 4];
    const int farther = (attempt - 1) / 4;
    out.width += (on ? size.width / 2 : 0) + farther * size.width;
    out.height += (on ? size.height / 2 : 0) + farther * size.height;
  }
  const double clearX = std::min(std::fabs(label.spec.clear) * view.scaleX, kFarthest);
  const double clearY = std::min(std::fabs(label.spec.clear) * view.scaleY, kFarthest);
  PointF middle = at;
  if (side == LabelSide::Above) middle.y -= clearY + out.height + size.height / 2;
  if (side == LabelSide::Below) middle.y += clearY + out.height + size.height / 2;
  if (side == LabelSide::Right) middle.x += clearX + out.width + size.width / 2;
  if (side == LabelSide::Left) middle.x -= clearX + out.width + size.width / 2;
  return PlateAbout(middle, size);
}

Rect PlateAt(const Picture& picture, const PictureView& view, const PictureLabel& label,
             int attempt) {
  const Size size = SizeOf(label);
  if (label.dimension < 0) return PlainPlate(view, label, size, attempt);
  const PictureDimension& d = picture.dimensions[static_cast<std::size_t>(label.dimension)];
  if (IsRound(d)) return RoundPlate(view, d, size, attempt);
  return LinearPlate(picture, view, d, size, attempt);
}

Rect HeldInside(const Rect& area, Rect plate) {
  const int width = platform::RectWidth(plate);
  const int height = platform::RectHeight(plate);
  plate.left = std::max(area.left, std::min(plate.left, area.right - width));
  plate.top = std::max(area.top, std::min(plate.top, area.bottom - height));
  plate.right = plate.left + width;
  plate.bottom = plate.top + height;
  return plate;
}

bool IsInside(const Rect& area, const Rect& plate) {
  return plate.left >= area.left && plate.top >= area.top && plate.right <= area.right &&
         plate.bottom <= area.bottom;
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// The plates that stand already, by bands of rows: a crowded picture compares neighbours only.
struct Standing {
  Rect area;
  std::vector<std::vector<Rect>> bands;
};

std::size_t BandOf(const Standing& standing, int y) {
  const int last = static_cast<int>(standing.bands.size()) - 1;
  return static_cast<std::size_t>(std::clamp((y - standing.area.top) / kBandHeight, 0, last));
}

void Stand(Standing& standing, const Rect& plate) {
  const std::size_t last = BandOf(standing, plate.bottom - 1);
  for (std::size_t i = BandOf(standing, plate.top); i <= last; ++i) {
    standing.bands[i].push_back(plate);
  }
}

bool IsFree(const Standing& standing, const Rect& plate) {
  const std::size_t last = BandOf(standing, plate.bottom - 1);
  for (std::size_t i = BandOf(standing, plate.top); i <= last; ++i) {
    for (const Rect& other : standing.bands[i]) {
      if (Overlap(other, plate)) return false;
    }
  }
  return true;
}

bool WasMoved(const PictureLabel& label) {
  return label.spec.shiftX != 0 || label.spec.shiftY != 0;
}

Rect MovedPlate(const Picture& picture, const PictureView& view, const PictureLabel& label) {
  const Rect usual = PlateAt(picture, view, label, 0);
  PointF middle = MiddleOf(usual);
  middle.x += label.spec.shiftX * platform::RectWidth(view.area);
  middle.y += label.spec.shiftY * platform::RectHeight(view.area);
  return HeldInside(view.area, PlateAbout(Held(middle), SizeOf(label)));
}

Rect FreePlate(const Picture& picture, const PictureView& view, const PictureLabel& label,
               const Standing& standing) {
  for (int attempt = 0; attempt < kTries; ++attempt) {
    const Rect plate = PlateAt(picture, view, label, attempt);
    if (IsInside(view.area, plate) && IsFree(standing, plate)) return plate;
  }
  return HeldInside(view.area, PlateAt(picture, view, label, 0));
}

bool SameView(const PictureView& a, const PictureView& b) {
  return platform::SameRect(a.area, b.area) && a.centreX == b.centreX && a.centreY == b.centreY &&
         a.originX == b.originX && a.originY == b.originY && a.scaleX == b.scaleX &&
         a.scaleY == b.scaleY;
}

void PlaceAll(Picture& picture, const PictureView& view) {
  Standing standing;
  standing.area = view.area;
  const int height = std::max(platform::RectHeight(view.area), 1);
  standing.bands.resize(static_cast<std::size_t>((height + kBandHeight - 1) / kBandHeight));
  std::vector<Rect>& plates = picture.places.plates;
  plates.assign(picture.labels.size(), Rect{});
  // What the user has put somewhere stands first, then the dimensions, which can give way least.
  const auto place = [&](bool moved, bool dimension) {
    for (std::size_t i = 0; i < plates.size(); ++i) {
      const PictureLabel& label = picture.labels[i];
      if (WasMoved(label) != moved) continue;
      if (!moved && (label.dimension >= 0) != dimension) continue;
      plates[i] =
          moved ? MovedPlate(picture, view, label) : FreePlate(picture, view, label, standing);
      Stand(standing, plates[i]);
    }
  };
  place(true, false);
  place(false, true);
  place(false, false);
  picture.places.view = view;
  picture.places.known = true;
}

void Add(LeadLines& lead, const PointF& from, const PointF& to) {
  lead.lines[lead.lineCount][0] = from;
  lead.lines[lead.lineCount++][1] = to;
}

// A head whose tip points along `direction`.
void AddArrow(LeadLines& lead, const PointF& tip, const PointF& direction) {
  const PointF back = Sum(tip, direction, -kArrow);
  const PointF across{-direction.y, direction.x};
  PointF* arrow = lead.arrows[lead.arrowCount++];
  arrow[0] = tip;
  arrow[1] = Sum(back, across, kArrowHalf);
  arrow[2] = Sum(back, across, -kArrowHalf);
}

// From a measured point to a little beyond the dimension line; none where they meet.
void AddExtension(LeadLines& lead, const PointF& point, const PointF& end) {
  const PointF way{end.x - point.x, end.y - point.y};
  if (std::hypot(way.x, way.y) <= kExtensionGap) return;
  const PointF direction = Unit(way);
  Add(lead, Sum(point, direction, kExtensionGap), Sum(end, direction, kOvershoot));
}

// The dimension line runs through the middle of its label. Heads stand inside where they and the
// words have room between the extension lines, else outside.
LeadLines LinearLines(const PictureView& view, const PictureDimension& d, const Size& size,
                      const Rect& plate) {
  LeadLines lead;
  const Frame frame = FrameOf(view, d);
  const double level = Dot(MiddleOf(plate), frame.away);
  PointF a = Sum(frame.from, frame.away, level - Dot(frame.from, frame.away));
  PointF b = Sum(frame.to, frame.away, level - Dot(frame.to, frame.away));
  AddExtension(lead, frame.from, a);
  AddExtension(lead, frame.to, b);
  if (Dot(b, frame.along) < Dot(a, frame.along)) std::swap(a, b);
  const double from = Dot(a, frame.along);
  const double to = Dot(b, frame.along);
  const double middle = Dot(MiddleOf(plate), frame.along);
  const double half = Extent(size, frame.along) / 2;
  // Words that reach in from an end cover a head that stands there, too.
  const bool wordsInside = middle + half > from && middle - half < to;
  const double needed = 2 * kArrow + (wordsInside ? 2 * half : kArrow);
  const bool headsInside = to - from >= needed;
  const PointF back{-frame.along.x, -frame.along.y};
  const double tail = headsInside ? 0 : kTail;
  // Out to words that stand beyond an end.
  const double before = std::max(tail, from - middle);
  const double behind = std::max(tail, middle - to);
  Add(lead, Sum(a, back, before), Sum(b, frame.along, behind));
  AddArrow(lead, a, headsInside ? back : frame.along);
  AddArrow(lead, b, headsInside ? frame.along : back);
  return lead;
}

// From the circle, as if from its middle, to a level shoulder at the words.
LeadLines RoundLines(const PictureView& view, const PictureDimension& d, const Rect& plate) {
  LeadLines lead;
  const PointF centre = PlaceOf(view, d.x0, d.y0);
  const PointF middle = MiddleOf(plate);
  const bool right = middle.x >= centre.x;
  const PointF words{static_cast<double>(right ? plate.left : plate.right), middle.y};
  const PointF end{words.x + (right ? -kShoulder : kShoulder), words.y};
  const PointF out = Unit({end.x - centre.x, end.y - centre.y});
  const PointF tip =
      Held({centre.x + out.x * d.radius * view.scaleX, centre.y + out.y * d.radius * view.scaleY});
  Add(lead, tip, end);
  Add(lead, end, words);
  AddArrow(lead, tip, Unit({tip.x - end.x, tip.y - end.y}));
  return lead;
}

LeadLines PlainLines(const PictureView& view, const PictureLabel& label, const Rect& plate) {
  LeadLines lead;
  const PointF at = PlaceOf(view, label.x, label.y);
  const PointF near{
      std::clamp(at.x, static_cast<double>(plate.left), static_cast<double>(plate.right)),
      std::clamp(at.y, static_cast<double>(plate.top), static_cast<double>(plate.bottom))};
  const double clear = label.spec.side == LabelSide::On
                           ? 0
                           : std::fabs(label.spec.clear) * std::max(view.scaleX, view.scaleY);
  if (std::hypot(near.x - at.x, near.y - at.y) > clear + kLeadFrom * kSideGap) Add(lead, at, near);
  return lead;
}

}  // namespace

Rect UsualPlate(const Picture& picture, const PictureView& view, const PictureLabel& label) {
  return PlateAt(picture, view, label, 0);
}

const std::vector<Rect>& PlacedLabels(Picture& picture, const PictureView& view) {
  if (!picture.places.known || !SameView(picture.places.view, view)) PlaceAll(picture, view);
  return picture.places.plates;
}

LeadLines LeadLinesOf(const Picture& picture, const PictureView& view, const PictureLabel& label,
                      const Rect& plate) {
  if (label.dimension < 0) return PlainLines(view, label, plate);
  const PictureDimension& d = picture.dimensions[static_cast<std::size_t>(label.dimension)];
  if (IsRound(d)) return RoundLines(view, d, plate);
  return LinearLines(view, d, SizeOf(label), plate);
}

}  // namespace morva
