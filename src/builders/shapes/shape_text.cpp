#include "builders/shapes/shape_text.h"

#include <algorithm>
#include <cmath>

#include "app/limits.h"
#include "library/extents.h"
#include "library/kept_text.h"
#include "library/motion_text.h"
#include "text/code_writer.h"
#include "text/codetext.h"
#include "text/length_units.h"
#include "text/series_trig.h"

namespace morva {

namespace {

constexpr int kPointDecimals = 3;
constexpr double kShownStep = 0.001;  // of a size in its field
constexpr int kFeedDecimals = 1;
constexpr char16_t kCheckWords[] =
    u"Enter valid non-zero shape dimensions and a positive feed, with Safe Z above the cutting "
    u"depth.";
constexpr char16_t kStretchWords[] =
    u"A circle, and a rectangle or slot at an angle, cannot be stretched. Type width and height in "
    u"the ratio of the saved ones.";

constexpr std::u16string_view kComments[] = {
    u"(SHAPE: SQUARE)", u"(SHAPE: RECTANGLE)", u"(SHAPE: CIRCLE)", u"(SHAPE: TRIANGLE)",
    u"(SHAPE: LINE)",   u"(SHAPE: DIAMOND)",   u"(SHAPE: SLOT)"};

constexpr BuilderField Length(const char16_t* label, const char16_t* start, double fallback = 0) {
  return {.label = label, .start = start, .fallback = fallback, .follows = Follows::Length};
}
constexpr BuilderField At(const char16_t* label) { return Length(label, u"0.000"); }
constexpr BuilderField Depth() { return Length(u"Z depth", u"-0.100", -0.1); }
constexpr BuilderField Feed() {
  return {.label = u"Feed",
          .start = u"10.0",
          .fallback = 10,
          .follows = Follows::Length,
          .decimals = 2};
}
constexpr BuilderField SafeZ() { return Length(u"Safe Z", u"0.500", 0.5); }

// clang-format off
constexpr BuilderField kFields[kShapeKinds][kShapeNumbers] = {
    {At(u"Origin X"), At(u"Origin Y"), Length(u"Size", u"2.000"), {}, Depth(), Feed(), SafeZ()},
    {At(u"Origin X"), At(u"Origin Y"), Length(u"Width", u"3.000"), Length(u"Height", u"2.000"),
     Depth(), Feed(), SafeZ()},
    {At(u"Center X"), At(u"Center Y"), Length(u"Radius", u"1.000"), Length(u"Circumf.", u"6.283"),
     Depth(), Feed(), SafeZ()},
    {At(u"Origin X"), At(u"Origin Y"), Length(u"Width", u"3.000"), Length(u"Height", u"2.000"),
     Depth(), Feed(), SafeZ()},
    {At(u"Start X"), At(u"Start Y"), Length(u"Delta X", u"3.000"), Length(u"Delta Y", u"1.500"),
     Depth(), Feed(), SafeZ()},
    {At(u"Center X"), At(u"Center Y"), Length(u"Width", u"3.000"), Length(u"Height", u"2.000"),
     Depth(), Feed(), SafeZ()},
    {At(u"Center X"), At(u"Center Y"), Length(u"Length", u"2.000"), Length(u"Width", u"0.500"),
     Depth(), Feed(), SafeZ()},
    {At(u"Place X"), At(u"Place Y"), Length(u"Saved width", u""), Length(u"Saved height", u""),
     Depth(), Feed(), SafeZ()},
};
// clang-format on

int KindOf(int kind) { return kind >= 0 && kind < kShapeKinds ? kind : kShapeSquare; }

CutData CutOf(const ShapeValues& values) {
  const double* n = values.numbers;
  return {n[kShapeDepth], n[kShapeFeed], n[kShapeSafeZ]};
}

Extents ExtentsOf(const SavedShape& saved) {
  Extents extents;
  ObjectExtents(saved.objects, saved.count, extents);
  return extents;
}

double Shown(double value) { return Printed(value, kPointDecimals); }

// The scale of one direction, in the values' units for an inch of the shape.
double ScaleOf(const ShapeValues& values, int field) {
  const double extent = SavedExtent(*values.saved, field);
  const double size = std::fabs(values.numbers[field]);
  if (!(extent > 0) || ShowsExtent(extent, size, values.metric)) {
    return values.metric ? kMmPerInch : 1;
  }
  return size / extent;
}

// The radius of the circle: its own, or by its circumference where that is 0.
double RadiusOf(const ShapeValues& values) {
  const double radius = std::fabs(values.numbers[kShapeSize]);
  const double around = values.numbers[kShapeSize2];
  return radius <= kLeastCut && around > kLeastCut ? around / kTwoPi : radius;
}

// The outline of the straight kinds in the order in which it is cut, open for a line.
std::vector<PicturePoint> CornersOf(const ShapeValues& values) {
  const double* n = values.numbers;
  const double x = n[kShapeX];
  const double y = n[kShapeY];
  const double w = std::fabs(n[kShapeSize]);
  const double h = values.kind == kShapeSquare ? w : std::fabs(n[kShapeSize2]);
  switch (values.kind) {
    case kShapeSquare:
    case kShapeRectangle:
      return {{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}};
    case kShapeTriangle:
      return {{x, y}, {x + w, y}, {x + w / 2, y + h}};
    case kShapeDiamond:
      return {{x, y + h / 2}, {x + w / 2, y}, {x, y - h / 2}, {x - w / 2, y}};
    case kShapeLine:
      return {{x, y}, {x + n[kShapeSize], y + n[kShapeSize2]}};
    default:
      return {};
  }
}

ClosedShape SlotOf(const ShapeValues& values) {
  const double* n = values.numbers;
  return {ItemShape::Slot, n[kShapeX], n[kShapeY], n[kShapeSize], n[kShapeSize2], 0};
}

bool IsSize(double size) { return CutsPrinted(std::fabs(size), kPointDecimals); }

// The size field that says nothing to cut, -1 for none. What lies about its middle is written by
// halves.
int SizeFault(const ShapeValues& values) {
  const double first = values.numbers[kShapeSize];
  const double second = values.numbers[kShapeSize2];
  switch (values.kind) {
    case kShapeLine:
      return !IsSize(first) && !IsSize(second) ? kShapeSize : -1;
    case kShapeCircle:
      return IsSize(RadiusOf(values)) ? -1 : kShapeSize;
    case kShapeSaved:
      // A direction without an extent that its field could show has nothing to scale.
      for (const int field : {kShapeSize, kShapeSize2}) {
        const double unit = values.metric ? kMmPerInch : 1;
        if (!values.saved || IsSize(values.numbers[field])) continue;
        if (Shown(SavedExtent(*values.saved, field) * unit) > kLeastCut) return field;
      }
      return -1;
    case kShapeSquare:
      return IsSize(first) ? -1 : kShapeSize;
    case kShapeDiamond:
      return !IsSize(first / 2) ? kShapeSize : IsSize(second / 2) ? -1 : kShapeSize2;
    case kShapeSlot:
      return !IsSize(first) ? kShapeSize : IsSize(second / 2) ? -1 : kShapeSize2;
    default:
      return !IsSize(first) ? kShapeSize : IsSize(second) ? -1 : kShapeSize2;
  }
}

int FaultyField(const ShapeValues& values) {
  const double* n = values.numbers;
  if (Shown(n[kShapeSafeZ]) <= Shown(n[kShapeDepth])) return kShapeSafeZ;
  if (!CutsPrinted(n[kShapeFeed], kFeedDecimals)) return kShapeFeed;
  return SizeFault(values);
}

void PutRetract(const ShapeValues& values, CodeWriter& out) {
  Line(out, u"G00 Z", values.numbers[kShapeSafeZ], kPointDecimals);
}

void PutFeed(const ShapeValues& values, CodeWriter& out) {
  Line(out, u" F", values.numbers[kShapeFeed], kFeedDecimals);
}

void PutStart(const ShapeValues& values, double x, double y, CodeWriter& out) {
  EmitMotion(out, u"G00", x, y, 0, false);
  Put(out, u"G01 Z", values.numbers[kShapeDepth], kPointDecimals);
  PutFeed(values, out);
}

// One full turn in one word.
void PutCircle(const ShapeValues& values, CodeWriter& out) {
  const double r = RadiusOf(values);
  const double x = values.numbers[kShapeX] + r;
  const double y = values.numbers[kShapeY];
  PutStart(values, x, y, out);
  Put(out, u"G02 X", x, kPointDecimals);
  Put(out, u" Y", y, kPointDecimals);
  Put(out, u" I", -r, kPointDecimals);
  Put(out, u" J0.000");
  PutFeed(values, out);
}

void PutCorners(const ShapeValues& values, CodeWriter& out) {
  const std::vector<PicturePoint> corners = CornersOf(values);
  const double feed = values.numbers[kShapeFeed];
  PutStart(values, corners[0].x, corners[0].y, out);
  for (std::size_t i = 1; i < corners.size(); ++i) {
    EmitMotion(out, u"G01", corners[i].x, corners[i].y, feed, true);
  }
  if (values.kind == kShapeLine) return;
  EmitMotion(out, u"G01", corners[0].x, corners[0].y, feed, true);
}

void PutBuiltIn(const ShapeValues& values, CodeWriter& out) {
  PutHead(out, kComments[values.kind], values.metric);
  PutRetract(values, out);
  if (values.kind == kShapeCircle) {
    PutCircle(values, out);
  } else if (values.kind == kShapeSlot) {
    EmitSlot(out, SlotOf(values), CutOf(values));
  } else {
    PutCorners(values, out);
  }
  PutRetract(values, out);
}

void PutSaved(const ShapeValues& values, CodeWriter& out) {
  Put(out, u"(SAVED CUSTOM SHAPE: ");
  Put(out, NameInComment(values.saved->name));
  Line(out, u")");
  Line(out, UnitLine(values.metric));
  Line(out, kPlainModes);
  EmitSavedShape(out, *values.saved, PlaceOfSaved(values), CutOf(values));
  Line(out, u"(END SAVED CUSTOM SHAPE)");
}

void AddSizes(Picture& picture, const PictureBounds& box) {
  if (box.maxX > box.minX) {
    AddDimension(picture, {.way = DimensionWay::Across,
                           .x0 = box.minX,
                           .y0 = box.minY,
                           .x1 = box.maxX,
                           .y1 = box.minY,
                           .row = -1,
                           .outside = true});
  }
  if (box.maxY > box.minY) {
    AddDimension(picture, {.way = DimensionWay::Upright,
                           .x0 = box.maxX,
                           .y0 = box.minY,
                           .x1 = box.maxX,
                           .y1 = box.maxY,
                           .row = 1,
                           .outside = true});
  }
}

void DrawCircle(const ShapeValues& values, Picture& picture) {
  const double* n = values.numbers;
  const double r = RadiusOf(values);
  if (!(r > 0)) return;
  AddCircle(picture, {n[kShapeX], n[kShapeY]}, r, Ink::Feature);
  AddDimension(picture,
               {.way = DimensionWay::Radius, .x0 = n[kShapeX], .y0 = n[kShapeY], .radius = r});
}

void DrawBuiltIn(const ShapeValues& values, Picture& picture) {
  if (values.kind == kShapeCircle) return DrawCircle(values, picture);
  if (values.kind == kShapeSlot) {
    AddClosedShape(picture, SlotOf(values), Ink::Feature);
  } else if (values.kind == kShapeLine) {
    AddPath(picture, CornersOf(values), Ink::Feature);
  } else {
    AddLoop(picture, CornersOf(values), Ink::Feature);
  }
  PictureBounds bounds;
  if (BoundsOfPicture(picture, bounds)) AddSizes(picture, bounds);
}

void DrawSaved(const ShapeValues& values, Picture& picture) {
  AddSavedShape(picture, *values.saved, PlaceOfSaved(values), Ink::Feature);
  PictureBounds bounds;
  if (!BoundsOfPicture(picture, bounds)) return;
  AddSizes(picture, bounds);
  AddLabel(picture, {(bounds.minX + bounds.maxX) / 2, bounds.maxY}, values.saved->name,
           {.side = LabelSide::Above});
}

}  // namespace

ShapeValues ShapeOf(int kind, const FormValues& form, const SavedShape* saved) {
  ShapeValues values;
  values.kind = KindOf(kind);
  values.metric = form.metric;
  std::copy_n(form.numbers, kShapeNumbers, values.numbers);
  values.saved = saved;
  return values;
}

std::span<const BuilderField> ShapeFields(int kind) { return kFields[KindOf(kind)]; }

std::u16string SavedShapeStart(const SavedShape& saved, bool metric, int field) {
  if (field == kShapeSize || field == kShapeSize2) {
    return FixedText(SavedExtent(saved, field) * (metric ? kMmPerInch : 1), kPointDecimals);
  }
  if (metric && field == kShapeDepth) return u"-2.540";
  if (metric && field == kShapeFeed) return u"254.0";
  if (metric && field == kShapeSafeZ) return u"12.700";
  return kFields[kShapeSaved][field].start;
}

double SavedExtent(const SavedShape& saved, int field) {
  const Extents extents = ExtentsOf(saved);
  return field == kShapeSize ? WidthOf(extents) : HeightOf(extents);
}

bool ShowsExtent(double extent, double size, bool metric) {
  const double switched =
      metric ? Shown(Shown(extent) * kMmPerInch) : Shown(Shown(extent * kMmPerInch) * kInchPerMm);
  return size == Shown(extent * (metric ? kMmPerInch : 1)) || size == switched;
}

ShapePlace PlaceOfSaved(const ShapeValues& values) {
  ShapePlace place{values.numbers[kShapeX], values.numbers[kShapeY]};
  if (!values.saved) return place;
  place.scaleX = ScaleOf(values, kShapeSize);
  place.scaleY = ScaleOf(values, kShapeSize2);
  // Three decimals of a size do not tell a factor to its last bit: the longer direction does.
  const double width = SavedExtent(*values.saved, kShapeSize);
  const double height = SavedExtent(*values.saved, kShapeSize2);
  const bool wide = width >= height;
  const double factor = wide ? place.scaleX : place.scaleY;
  const double other = std::fabs(values.numbers[wide ? kShapeSize2 : kShapeSize]);
  const double extent = wide ? height : width;
  // Both texts are rounded, and twice of a rounded size is further off.
  const double slack = kShownStep * factor / (values.metric ? kMmPerInch : 1);
  const bool shown =
      Shown(extent * factor) == Shown(other) ||
      (!KeepsForm(*values.saved, place) && std::fabs(extent * factor - other) <= slack);
  if (!(extent > 0) || shown) place.scaleX = place.scaleY = factor;
  return place;
}

BuilderFault CheckShape(const ShapeValues& values) {
  const int field = FaultyField(values);
  if (field >= 0) return {kCheckWords, field};
  if (values.kind == kShapeSaved && values.saved &&
      !KeepsForm(*values.saved, PlaceOfSaved(values))) {
    return {kStretchWords, kShapeSize2};
  }
  return {};
}

void WriteShape(const ShapeValues& values, CodeWriter& out) {
  if (values.kind != kShapeSaved) return PutBuiltIn(values, out);
  if (values.saved) PutSaved(values, out);
}

std::size_t ShapeRoom(const ShapeValues& values) {
  const std::size_t objects = values.saved ? static_cast<std::size_t>(values.saved->count) : 0;
  return std::max<std::size_t>(kMaxBuilderText, objects * kObjectTextUnits + kPatternFrameUnits) -
         1;
}

void DrawShape(const ShapeValues& values, Picture& picture) {
  if (values.kind != kShapeSaved) {
    DrawBuiltIn(values, picture);
  } else if (values.saved) {
    DrawSaved(values, picture);
  }
  // Where the coordinates of the first two fields lie.
  AddCross(picture, {values.numbers[kShapeX], values.numbers[kShapeY]}, Ink::Construction);
}

}  // namespace morva
