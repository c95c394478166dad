#include "plate/geometry/plate_picture.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "library/outline.h"
#include "library/placed_shape.h"
#include "text/length_units.h"

namespace morva {

namespace {

using platform::PointF;

// Custom objects up to which each is drawn by the chords that are cut, and filled. More than that
// are drawn by their lines and arcs, for which there is room in any case.
constexpr int kFineObjects = 600;

// A polyline of an object; closed ones but for their last point, which is the first again.
struct Chords {
  PicturePoint points[kOutlinePoints];
  int count = 0;
  bool closed = false;
};

Chords ChordsOf(const double* xs, const double* ys, int count, bool closed) {
  Chords chords;
  chords.closed = closed && count > 2;
  chords.count = chords.closed ? count - 1 : count;
  for (int i = 0; i < chords.count; ++i) chords.points[i] = {xs[i], ys[i]};
  return chords;
}

std::span<const PicturePoint> PointsOf(const Chords& chords) {
  return std::span(chords.points).first(static_cast<std::size_t>(chords.count));
}

void AddChords(const Chords& chords, Ink ink, int part, Picture& picture) {
  if (chords.closed) {
    AddLoop(picture, PointsOf(chords), ink, part);
  } else if (chords.count > 0) {
    AddPath(picture, PointsOf(chords), ink, part);
  }
}

bool IsClosedObject(const SketchObject& object) { return object.type != kTypeLine; }

void DrawCustomOutline(const PlateRecord& record, const PlateNumbers& n, Picture& picture) {
  const OutlineStretch stretch = StretchOf(n, record.outline);
  for (int i = 0; i < record.outline.count; ++i) {
    const SketchObject& object = record.outline.objects[i];
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    const int count = StretchedOutline(stretch, object, xs, ys);
    const Chords chords = ChordsOf(xs, ys, count, IsClosedObject(object));
    if (chords.closed) AddFill(picture, PointsOf(chords), Ink::Face, kOutlinePart);
    AddChords(chords, Ink::Outline, kOutlinePart, picture);
  }
}

// Rectangle, round and obround plates are boxes with rounded corners.
PictureBox BoxOf(const PlateNumbers& n) {
  PictureBox box{0, 0, n.length, n.width, 0, CornerRadius(n)};
  if (n.shape == PlateShape::Round) box.height = n.length;
  if (n.shape == PlateShape::Obround) box.width = std::max(n.length, n.width);
  if (n.shape != PlateShape::Rectangle) box.radius = box.height / 2;
  return box;
}

void DrawOutline(const PlateRecord& record, const PlateNumbers& n, Picture& picture) {
  if (n.shape == PlateShape::Custom) return DrawCustomOutline(record, n, picture);
  const PictureBox box = BoxOf(n);
  if (!(box.width > 0 && box.height > 0)) return;
  AddFilledBox(picture, box, Ink::Face, kOutlinePart);
  AddBox(picture, box, Ink::Outline, kOutlinePart);
}

// How a feature is drawn.
struct Look {
  Ink line = Ink::Feature;
  Ink fill = Ink::Opening;
  bool filled = true;
  bool fine = true;
};

void DrawPlain(const ClosedShape& item, const Look& look, int part, Picture& picture) {
  const bool round = item.shape == ItemShape::Circle;
  if (look.filled && round) {
    const double r = item.width / 2;
    if (r > 0) AddDisc(picture, {item.x, item.y, r, r}, look.fill, part);
  } else if (look.filled && item.height > 0) {
    AddFilledBox(picture,
                 {item.x, item.y, std::max(item.width, item.height), item.height, item.angle,
                  item.height / 2},
                 look.fill, part);
  }
  AddClosedShape(picture, item, look.line, part);
}

void DrawOwnShape(const PlateNumbers& n, const SavedShape& shape, PointF at, const Look& look,
                  int part, Picture& picture) {
  if (!look.fine) {
    const double scale = n.metric ? kMmPerInch : 1;
    AddSavedShape(picture, shape, {at.x, at.y, 0, scale, scale}, look.line, part);
    return;
  }
  for (int i = 0; i < shape.count; ++i) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    const int count = FeatureOutline(n, shape.objects[i], at, xs, ys);
    const Chords chords = ChordsOf(xs, ys, count, IsClosedObject(shape.objects[i]));
    if (chords.closed && look.filled) AddFill(picture, PointsOf(chords), look.fill, part);
    AddChords(chords, look.line, part, picture);
  }
}

Look LookOf(const PlateNumbers& n, const PlateFeature& feature, bool selected, bool fine) {
  Look look;
  const bool through = IsThrough(n, feature);
  look.fine = fine;
  look.filled = !feature.hidden;
  look.fill = through ? Ink::Opening : Ink::Pocket;
  look.line = selected         ? Ink::Selected
              : feature.hidden ? Ink::Hidden
              : through        ? Ink::Feature
                               : Ink::Blind;
  return look;
}

bool IsDrawn(const PlateFeature& feature, const PlatePicture& spec) {
  return !feature.deleted && (spec.hidden || !feature.hidden);
}

int OwnObjects(const PlateRecord& record, int count) {
  int objects = 0;
  for (int k = 0; k < count; ++k) objects += record.features[k].shape.count;
  return objects;
}

void DrawPatternCircle(const PlateNumbers& n, Picture& picture) {
  if (n.layout != PlateLayout::Circular) return;
  AddCircle(picture, {}, PatternRadius(n), Ink::Construction, kPlatePatternDiameter);
}

}  // namespace

void DrawPlate(const PlateRecord& record, const PlatePicture& spec, Picture& picture) {
  const PlateNumbers n = NumbersOf(record);
  ClearPicture(picture, n.metric);
  DrawOutline(record, n, picture);
  NextLayer(picture);
  if (spec.dimensions) DrawPatternCircle(n, picture);
  const int count = FeatureCount(n);
  const bool fine = OwnObjects(record, count) <= kFineObjects;
  for (int k = 0; k < count; ++k) {
    const PlateFeature& feature = record.features[k];
    if (!IsDrawn(feature, spec)) continue;
    const PointF at = FeaturePlace(n, feature, k);
    const Look look = LookOf(n, feature, k == spec.selected, fine);
    if (feature.shape.count > 0) {
      DrawOwnShape(n, feature.shape, at, look, FeatureTarget(k), picture);
    } else {
      DrawPlain(PlainFeature(n, k, at), look, FeatureTarget(k), picture);
    }
    AddCross(picture, {at.x, at.y}, look.line, FeatureTarget(k));
  }
  if (spec.dimensions) AddPlateDimensions(record, n, spec.selected, picture);
}

}  // namespace morva
