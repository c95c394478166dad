#include "plate/geometry/plate_layout.h"

#include <algorithm>
#include <cmath>

#include "library/extents.h"
#include "library/outline.h"
#include "library/placed_shape.h"
#include "text/length_units.h"
#include "text/series_trig.h"

namespace morva {

namespace {

using platform::PointF;

constexpr int kCorners = 4;
constexpr double kLeastExtent = 1e-9;     // inches; a thinner outline is not stretched
constexpr double kFallbackRadius = 0.35;  // of the shorter side, for a pattern without a diameter

int CountOf(double number) {
  // In this order for what is no number at all.
  return number >= 1 ? static_cast<int>(std::min<double>(number, kMaxPlateLines)) : 1;
}

// Of `count` places from one side's edge to the other's, the i-th.
double Spread(double side, double edge, int count, int i) {
  const double low = edge - side / 2;
  const double high = side / 2 - edge;
  return count > 1 ? low + (high - low) * i / (count - 1) : 0;
}

// The extents of what is cut of a shape.
bool CutExtents(const SavedShape& shape, Extents& extents) {
  SketchObject cut[kMaxShapeObjects];
  int count = 0;
  for (int i = 0; i < shape.count; ++i) {
    if (IsCut(shape.objects[i])) cut[count++] = shape.objects[i];
  }
  return ObjectExtents(cut, count, extents);
}

double PerInch(const PlateNumbers& numbers) { return numbers.metric ? kMmPerInch : 1; }

double Stretch(double wanted, double have) { return have > kLeastExtent ? wanted / have : 0; }

}  // namespace

PlateNumbers NumbersOf(const PlateRecord& record) {
  const auto number = [&record](PlateValue value) { return record.values[value].value; };
  const auto size = [&number](PlateValue value) { return std::fabs(number(value)); };
  PlateNumbers n;
  n.length = number(kPlateLength);
  n.width = number(kPlateWidth);
  n.edgeRadius = size(kPlateEdgeRadius);
  n.size = size(kPlateSize);
  n.slotLength = size(kPlateSlotLength);
  n.countX = CountOf(number(kPlateCountX));
  n.countY = CountOf(number(kPlateCountY));
  n.edgeX = size(kPlateEdgeX);
  n.edgeY = size(kPlateEdgeY);
  n.patternDiameter = number(kPlatePatternDiameter);
  n.depth = number(kPlateCutDepth);
  n.feed = number(kPlateFeed);
  n.safeZ = size(kPlateSafeZ);
  n.thickness = number(kPlateStock);
  n.shape = record.shape;
  n.type = record.type;
  n.layout = record.layout;
  n.metric = record.metric;
  return n;
}

bool PlateTextsRead(const PlateRecord& record, int& refused) {
  for (int i = 0; i < kPlateValues; ++i) {
    double number = 0;
    if (ReadStrictNumber(record.values[i].text, number)) continue;
    refused = i;
    return false;
  }
  return true;
}

int FeatureCount(const PlateNumbers& numbers) {
  if (numbers.layout == PlateLayout::Corners) return kCorners;
  const int count = numbers.countX * numbers.countY;
  return numbers.layout == PlateLayout::Circular ? std::min(count, kMaxPlateCircle) : count;
}

double PatternRadius(const PlateNumbers& numbers) {
  const double radius = std::fabs(numbers.patternDiameter / 2);
  return radius > 0 ? radius : kFallbackRadius * std::min(numbers.length, numbers.width);
}

PointF LayoutPlace(const PlateNumbers& n, int k) {
  if (n.layout == PlateLayout::Corners) {
    const double x = n.length / 2 - n.edgeX;
    const double y = n.width / 2 - n.edgeY;
    const bool right = k == 1 || k == 2;
    return {right ? x : -x, k >= 2 ? y : -y};
  }
  if (n.layout == PlateLayout::Grid) {
    return {Spread(n.length, n.edgeX, n.countX, k % n.countX),
            Spread(n.width, n.edgeY, n.countY, k / n.countX)};
  }
  const double radius = PatternRadius(n);
  const double angle = kTwoPi * k / FeatureCount(n);
  return {radius * SeriesCosine(angle), radius * SeriesSine(angle)};
}

PointF FeaturePlace(const PlateNumbers& numbers, const PlateFeature& feature, int k) {
  if (!feature.placed) return LayoutPlace(numbers, k);
  const double factor = PerInch(numbers);
  return {feature.x * factor, feature.y * factor};
}

double FeatureZ(const PlateNumbers& numbers, const PlateFeature& feature) {
  if (feature.through) return -numbers.thickness;
  return feature.depth > 0 ? -feature.depth * PerInch(numbers) : numbers.depth;
}

bool IsThrough(const PlateNumbers& numbers, const PlateFeature& feature) {
  return feature.through || FeatureZ(numbers, feature) <= -numbers.thickness;
}

ClosedShape PlainFeature(const PlateNumbers& n, int k, PointF at) {
  const bool upright = n.type == PlateFeatureType::SlotsY || n.type == PlateFeatureType::Mixed;
  const bool round =
      n.type == PlateFeatureType::Holes || (n.type == PlateFeatureType::Mixed && k % 2 == 0);
  if (round) return {ItemShape::Circle, at.x, at.y, n.size, 0, 0};
  return {ItemShape::Slot, at.x, at.y, n.slotLength, n.size, upright ? 90.0 : 0.0};
}

PointF FeatureReach(const PlateNumbers& n, const PlateFeature& feature, int k) {
  if (feature.shape.count > 0) {
    Extents extents;
    CutExtents(feature.shape, extents);
    const double factor = PerInch(n);
    return {std::max(-extents.minX, extents.maxX) * factor,
            std::max(-extents.minY, extents.maxY) * factor};
  }
  const ClosedShape item = PlainFeature(n, k, {});
  if (item.shape == ItemShape::Circle) return {item.width / 2, item.width / 2};
  const double along = std::max(item.width, item.height) / 2;
  const double across = item.height / 2;
  return item.angle == 0 ? PointF{along, across} : PointF{across, along};
}

int FeatureOutline(const PlateNumbers& numbers, const SketchObject& object, PointF at, double* xs,
                   double* ys) {
  if (!IsCut(object)) return 0;
  const double factor = PerInch(numbers);
  const int count = ObjectOutline(object, xs, ys);
  for (int i = 0; i < count; ++i) {
    xs[i] = at.x + xs[i] * factor;
    ys[i] = at.y + ys[i] * factor;
  }
  return count;
}

PointF PlateHalves(const PlateNumbers& numbers) {
  const double x = std::fabs(numbers.length) / 2;
  return {x, numbers.shape == PlateShape::Round ? x : std::fabs(numbers.width) / 2};
}

double CornerRadius(const PlateNumbers& numbers) {
  return std::min({numbers.edgeRadius, numbers.length / 2, numbers.width / 2});
}

OutlineStretch StretchOf(const PlateNumbers& numbers, const SavedShape& outline) {
  Extents box;
  if (!ObjectExtents(outline.objects, outline.count, box)) return {};
  return {(box.minX + box.maxX) / 2, (box.minY + box.maxY) / 2,
          Stretch(numbers.length, WidthOf(box)), Stretch(numbers.width, HeightOf(box))};
}

int StretchedOutline(const OutlineStretch& stretch, const SketchObject& object, double* xs,
                     double* ys) {
  if (!IsCut(object)) return 0;
  const int count = ObjectOutline(object, xs, ys);
  for (int i = 0; i < count; ++i) {
    xs[i] = (xs[i] - stretch.middleX) * stretch.scaleX;
    ys[i] = (ys[i] - stretch.middleY) * stretch.scaleY;
  }
  return count;
}

}  // namespace morva
