// The records of a picture: what may be added, and how much of it.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "forms/picture_parts.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kMostBulge = 1000;
constexpr double kQuarterBulge = std::numbers::sqrt2 - 1;  // tan(90 / 4 degrees)
constexpr int kMostRow = 20;
constexpr int kInchDecimals = 3;
constexpr int kMillimetreDecimals = 2;
constexpr char16_t kDiameterMark = u'\u00D8';
constexpr char16_t kTimesMark = u'\u00D7';
constexpr char16_t kCutMark = u'\u2026';

bool IsNear(double value) { return std::fabs(value) <= kPictureFar; }  // false for no number

bool AreNear(std::initializer_list<double> values) {
  return std::all_of(values.begin(), values.end(), IsNear);
}

bool IsSoundCorner(const PicturePoint& corner) {
  return AreNear({corner.x, corner.y}) && std::fabs(corner.bulge) <= kMostBulge;
}

bool Refuse(bool& flag) {
  flag = true;
  return false;
}

bool AddMark(Picture& picture, MarkKind kind, Ink ink, int part, std::size_t first,
             std::size_t count) {
  PictureMark mark;
  mark.kind = kind;
  mark.ink = ink;
  mark.part = part;
  mark.first = static_cast<std::int32_t>(first);
  mark.count = static_cast<std::int32_t>(count);
  picture.marks.push_back(mark);
  TakeInMark(picture, mark, picture.bounds, picture.hasBounds);
  picture.places.known = false;
  return true;
}

bool HasRoom(const Picture& picture, std::size_t points, std::size_t arcs) {
  return picture.marks.size() < kMaxPictureMarks &&
         points <= kMaxPicturePoints - picture.points.size() &&
         arcs <= kMaxPictureArcs - picture.arcs.size();
}

bool AddCorners(Picture& picture, MarkKind kind, std::span<const PicturePoint> corners, Ink ink,
                int part) {
  if (corners.empty()) return false;
  if (!std::all_of(corners.begin(), corners.end(), IsSoundCorner)) return Refuse(picture.unsound);
  if (!HasRoom(picture, corners.size(), 0)) return Refuse(picture.full);
  const std::size_t first = picture.points.size();
  picture.points.insert(picture.points.end(), corners.begin(), corners.end());
  return AddMark(picture, kind, ink, part, first, corners.size());
}

bool AddRound(Picture& picture, MarkKind kind, PictureArc arc, Ink ink, int part) {
  if (!AreNear({arc.x, arc.y, arc.radiusX, arc.radiusY, arc.start, arc.sweep})) {
    return Refuse(picture.unsound);
  }
  if (!HasRoom(picture, 0, 1)) return Refuse(picture.full);
  arc.radiusX = std::fabs(arc.radiusX);
  arc.radiusY = std::fabs(arc.radiusY);
  arc.sweep = std::clamp(arc.sweep, -360.0, 360.0);
  picture.arcs.push_back(arc);
  return AddMark(picture, kind, ink, part, picture.arcs.size() - 1, 1);
}

bool AddBoxMark(Picture& picture, MarkKind kind, const PictureBox& box, Ink ink, int part) {
  if (!AreNear({box.x, box.y, box.width, box.height, box.angle, box.radius})) {
    return Refuse(picture.unsound);
  }
  const double halfX = std::fabs(box.width) / 2;
  const double halfY = std::fabs(box.height) / 2;
  const double radius = std::min({std::fabs(box.radius), halfX, halfY});
  const bool roundX = radius > 0 && radius == halfX;  // no straight piece along X
  const bool roundY = radius > 0 && radius == halfY;
  if (roundX && roundY) {
    return AddRound(picture, kind == MarkKind::Fill ? MarkKind::Disc : MarkKind::Arc,
                    {box.x, box.y, radius, radius}, ink, part);
  }
  // Counter-clockwise from the lower side's left end. A bulge leads from one side to the next; the
  // half circle of a slot takes two of them as one.
  const double inX = halfX - radius;
  const double inY = halfY - radius;
  PicturePoint corners[8];
  std::size_t count = 0;
  const auto corner = [&](double x, double y, double bulge) {
    const double c = CosineOf(box.angle);
    const double s = SineOf(box.angle);
    corners[count++] = {box.x + x * c - y * s, box.y + x * s + y * c, bulge};
  };
  if (radius == 0) {
    corner(-halfX, -halfY, 0);
    corner(halfX, -halfY, 0);
    corner(halfX, halfY, 0);
    corner(-halfX, halfY, 0);
  } else if (roundY) {
    corner(-inX, -halfY, 0);
    corner(inX, -halfY, 1);
    corner(inX, halfY, 0);
    corner(-inX, halfY, 1);
  } else if (roundX) {
    corner(halfX, -inY, 0);
    corner(halfX, inY, 1);
    corner(-halfX, inY, 0);
    corner(-halfX, -inY, 1);
  } else {
    corner(-inX, -halfY, 0);
    corner(inX, -halfY, kQuarterBulge);
    corner(halfX, -inY, 0);
    corner(halfX, inY, kQuarterBulge);
    corner(inX, halfY, 0);
    corner(-inX, halfY, kQuarterBulge);
    corner(-halfX, inY, 0);
    corner(-halfX, -inY, kQuarterBulge);
  }
  return AddCorners(picture, kind, {corners, count}, ink, part);
}

void CutWords(std::u16string_view words, char16_t (&kept)[kPictureLabelUnits]) {
  constexpr std::size_t kRoom = kPictureLabelUnits - 1;
  std::size_t count = std::min(words.size(), kRoom);
  if (words.size() > kRoom) {
    --count;
    const bool half = (words[count - 1] & 0xFC00) == 0xD800;  // of a pair of units
    if (half) --count;
  }
  for (std::size_t i = 0; i < count; ++i) kept[i] = words[i] < u' ' ? u' ' : words[i];
  if (words.size() > kRoom) kept[count++] = kCutMark;
  kept[count] = 0;
}

std::u16string OwnWords(const PictureDimension& d, bool metric) {
  std::u16string words;
  if (d.times > 1) {
    words += IntegerText(d.times);
    words += kTimesMark;
    words += u' ';
  }
  double length = 0;
  if (d.way == DimensionWay::Across) length = std::fabs(d.x1 - d.x0);
  if (d.way == DimensionWay::Upright) length = std::fabs(d.y1 - d.y0);
  if (d.way == DimensionWay::Along) length = std::hypot(d.x1 - d.x0, d.y1 - d.y0);
  if (d.way == DimensionWay::Diameter) {
    words += kDiameterMark;
    length = 2 * d.radius;
  }
  if (d.way == DimensionWay::Radius) {
    words += u'R';
    length = d.radius;
  }
  return words + DimensionText(length, metric);
}

}  // namespace

void ClearPicture(Picture& picture, bool metric) {
  picture.metric = metric;
  picture.full = false;
  picture.unsound = false;
  picture.marks.clear();
  picture.points.clear();
  picture.arcs.clear();
  picture.labels.clear();
  picture.dimensions.clear();
  picture.hasBounds = false;
  picture.places.known = false;
}

bool AddLine(Picture& picture, PicturePoint from, PicturePoint to, Ink ink, int part) {
  const PicturePoint ends[2] = {from, to};
  return AddPath(picture, ends, ink, part);
}

bool AddPath(Picture& picture, std::span<const PicturePoint> corners, Ink ink, int part) {
  return AddCorners(picture, MarkKind::Path, corners, ink, part);
}

bool AddLoop(Picture& picture, std::span<const PicturePoint> corners, Ink ink, int part) {
  return AddCorners(picture, MarkKind::Loop, corners, ink, part);
}

bool AddFill(Picture& picture, std::span<const PicturePoint> corners, Ink ink, int part) {
  return AddCorners(picture, MarkKind::Fill, corners, ink, part);
}

bool AddCircle(Picture& picture, PicturePoint centre, double radius, Ink ink, int part) {
  return AddArc(picture, {centre.x, centre.y, radius, radius}, ink, part);
}

bool AddArc(Picture& picture, const PictureArc& arc, Ink ink, int part) {
  return AddRound(picture, MarkKind::Arc, arc, ink, part);
}

bool AddDisc(Picture& picture, const PictureArc& arc, Ink ink, int part) {
  return AddRound(picture, MarkKind::Disc, {arc.x, arc.y, arc.radiusX, arc.radiusY}, ink, part);
}

bool AddBox(Picture& picture, const PictureBox& box, Ink ink, int part) {
  return AddBoxMark(picture, MarkKind::Loop, box, ink, part);
}

bool AddFilledBox(Picture& picture, const PictureBox& box, Ink ink, int part) {
  return AddBoxMark(picture, MarkKind::Fill, box, ink, part);
}

bool AddCross(Picture& picture, PicturePoint at, Ink ink, int part) {
  return AddCorners(picture, MarkKind::Cross, {&at, 1}, ink, part);
}

void NextLayer(Picture& picture) {
  if (!HasRoom(picture, 0, 0)) {
    picture.full = true;
    return;
  }
  AddMark(picture, MarkKind::Layer, Ink::Outline, kNoPart, 0, 0);
}

int AddLabel(Picture& picture, PicturePoint at, std::u16string_view words, const LabelSpec& spec) {
  if (!AreNear({at.x, at.y, spec.clear, spec.shiftX, spec.shiftY})) {
    picture.unsound = true;
    return -1;
  }
  if (picture.labels.size() >= kMaxPictureLabels) {
    picture.full = true;
    return -1;
  }
  PictureLabel label;
  label.x = at.x;
  label.y = at.y;
  label.spec = spec;
  CutWords(words, label.words);
  label.width = platform::TextWidth(kPictureFont, label.words);
  picture.labels.push_back(label);
  picture.places.known = false;
  return static_cast<int>(picture.labels.size()) - 1;
}

int AddDimension(Picture& picture, const PictureDimension& dimension, const LabelSpec& spec,
                 std::u16string_view words) {
  PictureDimension kept = dimension;
  kept.radius = std::fabs(dimension.radius);
  kept.row = std::clamp(dimension.row, -kMostRow, kMostRow);
  if (!AreNear({kept.x0, kept.y0, kept.x1, kept.y1, kept.radius, kept.leader})) {
    picture.unsound = true;
    return -1;
  }
  const std::u16string shown =
      words.empty() ? OwnWords(kept, picture.metric) : std::u16string(words);
  kept.label = AddLabel(picture, {kept.x0, kept.y0}, shown, spec);
  if (kept.label < 0) return -1;
  picture.labels.back().dimension = static_cast<std::int32_t>(picture.dimensions.size());
  picture.dimensions.push_back(kept);
  return kept.label;
}

void MoveLabel(Picture& picture, int label, double shiftX, double shiftY) {
  if (label < 0 || label >= static_cast<int>(picture.labels.size())) return;
  if (!AreNear({shiftX, shiftY})) return;
  LabelSpec& spec = picture.labels[static_cast<std::size_t>(label)].spec;
  spec.shiftX = shiftX;
  spec.shiftY = shiftY;
  picture.places.known = false;
}

bool BoundsOfPicture(const Picture& picture, PictureBounds& bounds) {
  if (picture.hasBounds) bounds = picture.bounds;
  return picture.hasBounds;
}

std::u16string DimensionText(double length, bool metric) {
  return FixedText(length, metric ? kMillimetreDecimals : kInchDecimals);
}

}  // namespace morva
