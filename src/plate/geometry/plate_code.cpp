#include "plate/geometry/plate_code.h"

#include <cmath>

#include "documents/block_labels.h"
#include "library/motion_text.h"
#include "library/outline.h"
#include "plate/geometry/plate_layout.h"

namespace morva {

namespace {

using platform::PointF;

constexpr char16_t kCheckWords[] =
    u"Plate dimensions, feature size, and feed must be positive, with Safe Z above cutting depth.";
constexpr double kLeastFeed = 1e-6;
constexpr double kLeastRadius = 1e-6;  // a smaller one leaves square corners
constexpr std::size_t kRoomOfFeature = 2200;
constexpr std::size_t kRoomBeside = 1512592;

CutData CutOf(const PlateNumbers& numbers, double depth) {
  return {depth, std::fabs(numbers.feed), numbers.safeZ};
}

void WriteSquareCorners(const PlateNumbers& n, CodeWriter& out) {
  const double x = n.length / 2;
  const double y = n.width / 2;
  const double xs[] = {-x, x, x, -x, -x};
  const double ys[] = {-y, -y, y, y, -y};
  EmitPolyline(out, xs, ys, 5, CutOf(n, n.depth));
}

// Counter-clockwise from the left end of the lower side.
void WriteRoundCorners(const PlateNumbers& n, double radius, CodeWriter& out) {
  const CutData cut = CutOf(n, n.depth);
  const double x = n.length / 2;
  const double y = n.width / 2;
  // The end of a side, and the end and centre of the corner behind it.
  struct Corner {
    PointF from, to, centre;
  };
  const Corner corners[] = {
      {{x - radius, -y}, {x, radius - y}, {x - radius, radius - y}},
      {{x, y - radius}, {x - radius, y}, {x - radius, y - radius}},
      {{radius - x, y}, {-x, y - radius}, {radius - x, y - radius}},
      {{-x, radius - y}, {radius - x, -y}, {radius - x, radius - y}},
  };
  EmitStart(out, radius - x, -y, cut);
  for (const Corner& c : corners) {
    EmitMotion(out, u"G01", c.from.x, c.from.y, cut.feed, true);
    EmitArc(out, u"G03", c.to.x, c.to.y, c.centre.x - c.from.x, c.centre.y - c.from.y);
  }
  EmitRetract(out, cut);
}

void WriteCustomOutline(const PlateNumbers& numbers, const SavedShape& outline, CodeWriter& out) {
  const OutlineStretch stretch = StretchOf(numbers, outline);
  for (int i = 0; i < outline.count && !out.full; ++i) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    const int count = StretchedOutline(stretch, outline.objects[i], xs, ys);
    EmitPolyline(out, xs, ys, count, CutOf(numbers, numbers.depth));
  }
}

void WriteOutline(const PlateRecord& record, const PlateNumbers& numbers, CodeWriter& out) {
  const CutData cut = CutOf(numbers, numbers.depth);
  switch (numbers.shape) {
    case PlateShape::Rectangle: {
      const double radius = CornerRadius(numbers);
      if (radius < kLeastRadius) return WriteSquareCorners(numbers, out);
      return WriteRoundCorners(numbers, radius, out);
    }
    case PlateShape::Round:
      return EmitCircle(out, {ItemShape::Circle, 0, 0, numbers.length, 0, 0}, cut);
    case PlateShape::Obround:
      return EmitSlot(out, {ItemShape::Slot, 0, 0, numbers.length, numbers.width, 0}, cut);
    case PlateShape::Custom:
      return WriteCustomOutline(numbers, record.outline, out);
  }
}

void WriteFeature(const PlateNumbers& numbers, const PlateFeature& feature, int k,
                  CodeWriter& out) {
  if (feature.deleted) return;
  const PointF at = FeaturePlace(numbers, feature, k);
  const CutData cut = CutOf(numbers, FeatureZ(numbers, feature));
  if (feature.shape.count == 0) return EmitClosedShape(out, PlainFeature(numbers, k, at), cut);
  for (int i = 0; i < feature.shape.count && !out.full; ++i) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    const int count = FeatureOutline(numbers, feature.shape.objects[i], at, xs, ys);
    EmitPolyline(out, xs, ys, count, cut);
  }
}

// A through feature that is cut needs a thickness.
bool HasThickness(const PlateRecord& record, const PlateNumbers& numbers) {
  if (numbers.thickness > 0) return true;
  for (int k = 0; k < FeatureCount(numbers); ++k) {
    if (record.features[k].through && !record.features[k].deleted) return false;
  }
  return true;
}

}  // namespace

bool CheckPlate(const PlateRecord& record, Refusal& refusal, int& refusedValue) {
  refusal = Refusal();
  refusedValue = -1;
  if (record.unnamed) return false;
  const PlateNumbers n = NumbersOf(record);
  refusal.title = kPlateBoxTitle;
  if (!PlateTextsRead(record, refusedValue)) return false;
  refusal.words = kCheckWords;
  return n.length > 0 && n.width > 0 && n.size > 0 && std::fabs(n.feed) > kLeastFeed &&
         n.safeZ > n.depth && HasThickness(record, n);
}

void WritePlate(const PlateRecord& record, CodeWriter& out) {
  const PlateNumbers numbers = NumbersOf(record);
  Line(out, u"");
  Line(out, kPlateLabel);
  Line(out, UnitLine(numbers.metric));
  Line(out, kPlainModes);
  EmitRetract(out, CutOf(numbers, 0));
  Line(out, u"(PLATE OUTLINE)");
  WriteOutline(record, numbers, out);
  Line(out, u"(MOUNTING FEATURES)");
  for (int k = 0; k < FeatureCount(numbers) && !out.full; ++k) {
    WriteFeature(numbers, record.features[k], k, out);
  }
  Line(out, u"(END PLATE TEMPLATE)");
}

std::size_t PlateCodeRoom(const PlateRecord& record) {
  return static_cast<std::size_t>(FeatureCount(NumbersOf(record))) * kRoomOfFeature + kRoomBeside;
}

}  // namespace morva
