#include "plate/geometry/plate_picture.h"

#include <cmath>
#include <span>

#include "library/outline.h"
#include "library/placed_shape.h"
#include "plate/geometry/plate_layout.h"

namespace morva {

namespace {

using platform::PointF;

constexpr const char16_t* kSectionWords[kPlateSections] = {
    u"Length (X)",    u"Width (Y)",
    u"Corner radius", u"Diameter / width",
    u"Slot length",   u"Count X",
    u"Count Y",       u"Edge X",
    u"Edge Y",        u"Bolt Hole Circle",
    u"Cut depth",     u"Feed",
    u"Safe Z",        u"Depth and plate thickness"};

void DrawOutline(const PlateRecord& record, const PlateNumbers& n, Picture& picture) {
  const PointF halves = PlateHalves(n);
  if (n.shape == PlateShape::Custom) {
    const OutlineStretch stretch = StretchOf(n, record.outline);
    for (int i = 0; i < record.outline.count; ++i) {
      double xs[kOutlinePoints];
      double ys[kOutlinePoints];
      PicturePoint points[kOutlinePoints];
      const int count = StretchedOutline(stretch, record.outline.objects[i], xs, ys);
      for (int k = 0; k < count; ++k) points[k] = {xs[k], ys[k]};
      AddPath(picture, std::span(points).first(static_cast<std::size_t>(count)), Ink::Outline,
              kOutlinePart);
    }
    return;
  }
  double radius = CornerRadius(n);
  if (n.shape != PlateShape::Rectangle) radius = halves.y;
  const double width = n.shape == PlateShape::Obround ? std::fmax(halves.x, halves.y) : halves.x;
  const PictureBox box{0, 0, 2 * width, 2 * halves.y, 0, radius};
  AddFilledBox(picture, box, Ink::Face, kOutlinePart);
  AddBox(picture, box, Ink::Outline, kOutlinePart);
}

void DrawFeature(const PlateRecord& record, const PlateNumbers& n, int k, Ink ink,
                 Picture& picture) {
  const PlateFeature& feature = record.features[k];
  const PointF at = FeaturePlace(n, feature, k);
  const int part = FeatureTarget(k);
  if (feature.shape.count == 0) AddClosedShape(picture, PlainFeature(n, k, at), ink, part);
  for (int i = 0; i < feature.shape.count; ++i) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    PicturePoint points[kOutlinePoints];
    const int count = FeatureOutline(n, feature.shape.objects[i], at, xs, ys);
    for (int p = 0; p < count; ++p) points[p] = {xs[p], ys[p]};
    AddPath(picture, std::span(points).first(static_cast<std::size_t>(count)), ink, part);
  }
  AddCross(picture, {at.x, at.y}, ink, part);
}

}  // namespace

void DrawPlate(const PlateRecord& record, const PlatePicture& spec, Picture& picture) {
  const PlateNumbers n = NumbersOf(record);
  ClearPicture(picture, n.metric);
  DrawOutline(record, n, picture);
  NextLayer(picture);
  for (int k = 0; k < FeatureCount(n); ++k) {
    const PlateFeature& feature = record.features[k];
    if (feature.deleted || (feature.hidden && !spec.hidden)) continue;
    const Ink ink = feature.hidden          ? Ink::Hidden
                    : k == spec.selected    ? Ink::Selected
                    : IsThrough(n, feature) ? Ink::Feature
                                            : Ink::Blind;
    DrawFeature(record, n, k, ink, picture);
  }
}

const char16_t* PlateSectionWords(int section) {
  return section >= 0 && section < kPlateSections ? kSectionWords[section] : u"";
}

}  // namespace morva
