#include "plate/tools/plate_edit.h"

#include <cmath>

#include "library/extents.h"
#include "library/outline.h"
#include "library/placed_shape.h"
#include "library/shapes.h"
#include "plate/geometry/plate_layout.h"
#include "text/codetext.h"
#include "text/strict_number.h"

namespace morva {

namespace {

constexpr double kMostTyped = 100000;  // sizes and places stay below, in the plate's unit
constexpr double kAspectSlack = 0.0001;
constexpr int kShownDecimals = 4;

std::u16string Shown(double value) { return FixedText(value, kShownDecimals); }

bool ReadBelow(std::u16string_view text, double& value) {
  return ReadStrictNumber(text, value) && std::fabs(value) < kMostTyped;
}

bool ReadPositive(std::u16string_view text, double& value) {
  return ReadBelow(text, value) && value > 0;
}

// The numbers of the editor, in the plate's unit.
struct FeatureNumbers {
  double width = 0, height = 0, angle = 0, depth = 0, x = 0, y = 0;
};

// A text that stands as it was shown means the number that it was rounded from.
void KeepExact(std::u16string_view text, double shown, double& number) {
  if (text == Shown(shown)) number = shown;
}

bool ReadFeature(const FeatureForm& form, const FeatureNumbers& shown, double thickness,
                 FeatureNumbers& n) {
  if (!ReadBelow(form.x, n.x) || !ReadBelow(form.y, n.y)) return false;
  if (!ReadPositive(form.width, n.width) || !ReadPositive(form.height, n.height)) return false;
  if (!ReadStrictNumber(form.angle, n.angle)) return false;
  if (!ReadPositive(form.depth, n.depth)) return false;
  KeepExact(form.width, shown.width, n.width);
  KeepExact(form.height, shown.height, n.height);
  KeepExact(form.angle, shown.angle, n.angle);
  KeepExact(form.depth, shown.depth, n.depth);
  KeepExact(form.x, shown.x, n.x);
  KeepExact(form.y, shown.y, n.y);
  // Rounded for the editor the thickness may be more than it is.
  KeepExact(form.depth, thickness, n.depth);
  if (n.depth > thickness) return false;
  return form.kind != FeatureKindRow::Slot || n.height <= n.width;
}

// A number that is in force already keeps its text, which may hold more decimals.
void PutNumber(int value, double number) {
  if (plate.values[value].value == number && PlateTextReads(value)) return;
  SetPlateNumber(value, number, kShownDecimals);
}

// One rectangle, circle or slot about the feature's centre.
bool IsSingle(const SavedShape& shape) {
  const SketchObject& object = shape.objects[0];
  return shape.count == 1 && object.x == 0 && object.y == 0 && object.type >= kTypeRectangle &&
         object.type <= kTypeSlot;
}

FeatureKindRow KindOf(const SavedShape& shape) {
  if (!IsSingle(shape)) return FeatureKindRow::Custom;
  if (shape.objects[0].type == kTypeCircle) return FeatureKindRow::Circle;
  return shape.objects[0].type == kTypeSlot ? FeatureKindRow::Slot : FeatureKindRow::Rectangle;
}

void PutSingle(FeatureKindRow kind, const FeatureNumbers& n, double inches, SavedShape& shape) {
  shape = SavedShape();
  shape.count = 1;
  SketchObject& object = shape.objects[0];
  object.type = kind == FeatureKindRow::Circle ? kTypeCircle
                : kind == FeatureKindRow::Slot ? kTypeSlot
                                               : kTypeRectangle;
  object.size = n.width * inches;
  object.size2 = kind == FeatureKindRow::Circle ? 0 : n.height * inches;
  object.angle = n.angle;
}

bool CutBox(const SavedShape& shape, Extents& box) {
  return ObjectExtents(shape.objects, shape.count, box) && WidthOf(box) > 0 && HeightOf(box) > 0;
}

// What is cut of a shape of the library, about the centre of its box.
bool CopyCentred(int libraryIndex, SavedShape& shape) {
  if (libraryIndex < 0 || libraryIndex >= shapeLibrary.count) return false;
  const SavedShape& from = shapeLibrary.shapes[libraryIndex];
  shape = SavedShape();
  CopyBounded(shape.name, kShapeNameUnits, from.name);
  for (int i = 0; i < from.count; ++i) {
    if (!IsCut(from.objects[i])) continue;
    shape.objects[shape.count] = from.objects[i];
    shape.objects[shape.count++].group = 0;
  }
  Extents box;
  if (!CutBox(shape, box)) return false;
  for (int i = 0; i < shape.count; ++i) {
    shape.objects[i].x -= (box.minX + box.maxX) / 2;
    shape.objects[i].y -= (box.minY + box.maxY) / 2;
  }
  return true;
}

// By how much the shape is to be scaled. Sizes that the editor would show of the shape at one scale
// are that scale: of small ones the fourth decimal makes more than the slack. False: they would
// stretch it.
bool ScaleTo(const FeatureNumbers& n, double inches, const Extents& box, double& scale) {
  const double x = n.width * inches / WidthOf(box);
  const double y = n.height * inches / HeightOf(box);
  const bool even = std::fabs(x - y) <= kAspectSlack;
  scale = x;
  if (even || Shown(HeightOf(box) * x / inches) == Shown(n.height)) return true;
  scale = y;
  return Shown(WidthOf(box) * y / inches) == Shown(n.width);
}

// The shape in the size and at the angle of the editor. False: that would stretch it.
bool FitShape(const FeatureNumbers& n, double inches, SavedShape& shape) {
  Extents box;
  double scale = 1;
  if (!CutBox(shape, box) || !ScaleTo(n, inches, box, scale)) return false;
  const double turn = n.angle - shape.objects[0].angle;
  for (int i = 0; i < shape.count; ++i) {
    ScaleLengths(shape.objects[i], scale);
    if (turn != 0) TurnObject(shape.objects[i], 0, 0, turn);
  }
  return true;
}

void TakeCustomSize(const SavedShape& shape, double units, FeatureNumbers& n) {
  Extents box;
  CutBox(shape, box);
  n.width = WidthOf(box) * units;
  n.height = HeightOf(box) * units;
  n.angle = shape.objects[0].angle;
}

FeatureKindRow TakeSize(const PlateNumbers& numbers, const PlateFeature& feature, int k,
                        double units, FeatureNumbers& n) {
  if (feature.shape.count == 0) {
    const ClosedShape item = PlainFeature(numbers, k, {});
    const bool round = item.shape == ItemShape::Circle;
    n.width = round ? item.width : std::fmax(item.width, item.height);
    n.height = round ? item.width : item.height;
    n.angle = item.angle;
    return round ? FeatureKindRow::Circle : FeatureKindRow::Slot;
  }
  const FeatureKindRow kind = KindOf(feature.shape);
  const SketchObject& object = feature.shape.objects[0];
  if (kind == FeatureKindRow::Custom) {
    TakeCustomSize(feature.shape, units, n);
  } else {
    n.width = object.size * units;
    n.height = (object.type == kTypeCircle ? object.size : object.size2) * units;
    n.angle = object.angle;
  }
  return kind;
}

// What the editor rounds for its texts.
FeatureNumbers ExactNumbers(const PlateRecord& record, int k, FeatureKindRow& kind) {
  const PlateNumbers numbers = NumbersOf(record);
  const PlateFeature& feature = record.features[k];
  const double units = UnitsPerInch(record);
  FeatureNumbers n;
  kind = TakeSize(numbers, feature, k, units, n);
  const double blind = feature.depth > 0 ? feature.depth * units : std::fabs(numbers.depth);
  n.depth = feature.through ? numbers.thickness : blind;
  const platform::PointF at = FeaturePlace(numbers, feature, k);
  n.x = at.x;
  n.y = at.y;
  return n;
}

void ShowSize(const FeatureNumbers& n, FeatureForm& form) {
  form.width = Shown(n.width);
  form.height = Shown(n.height);
  form.angle = Shown(n.angle);
}

}  // namespace

FeatureForm ShowFeature(const PlateRecord& record, int k) {
  FeatureForm form;
  const FeatureNumbers n = ExactNumbers(record, k, form.kind);
  ShowSize(n, form);
  form.through = record.features[k].through;
  form.depth = Shown(n.depth);
  form.x = Shown(n.x);
  form.y = Shown(n.y);
  return form;
}

bool ChooseCustomShape(FeatureForm& form, int libraryIndex, const PlateRecord& record) {
  SavedShape shape;
  if (!CopyCentred(libraryIndex, shape)) return false;
  form.kind = FeatureKindRow::Custom;
  form.customShape = libraryIndex;
  FeatureNumbers n;
  TakeCustomSize(shape, UnitsPerInch(record), n);
  ShowSize(n, form);
  return true;
}

bool ApplyFeature(int k, const FeatureForm& form) {
  if (k < 0 || k >= FeatureCount(NumbersOf(plate))) return false;
  PlateFeature feature = plate.features[k];
  if (feature.locked || feature.deleted) return false;
  FeatureKindRow former = FeatureKindRow::Circle;
  FeatureNumbers shown = ExactNumbers(plate, k, former);
  const bool custom = form.kind == FeatureKindRow::Custom;
  if (custom && form.customShape >= 0) {
    if (!CopyCentred(form.customShape, feature.shape)) return false;
    TakeCustomSize(feature.shape, UnitsPerInch(plate), shown);
  }
  FeatureNumbers n;
  if (!ReadFeature(form, shown, NumbersOf(plate).thickness, n)) return false;
  const double inches = InchesPerUnit(plate);
  if (custom) {
    if (!FitShape(n, inches, feature.shape)) return false;
  } else {
    PutSingle(form.kind, n, inches, feature.shape);
  }
  feature.x = n.x * inches;
  feature.y = n.y * inches;
  feature.placed = true;
  feature.depth = n.depth * inches;
  feature.through = form.through;
  PutFeature(k, feature);
  return true;
}

bool ApplySection(int section, std::u16string_view text) {
  double number = 0;
  if (section < 0 || section >= kPlateFormValues || !ReadBelow(text, number)) return false;
  if (number == 0 && section != kPlateEdgeRadius) return false;
  // What stands as it was shown keeps all of its decimals.
  if (text == plate.values[section].text) return true;
  SetPlateNumber(section, number, kShownDecimals);
  return true;
}

bool ApplyDepthSection(std::u16string_view thickness, std::u16string_view depth) {
  double thick = 0;
  double deep = 0;
  if (!ReadPositive(thickness, thick) || !ReadPositive(depth, deep)) return false;
  const PlateNumbers now = NumbersOf(plate);
  if (thickness == Shown(now.thickness)) thick = now.thickness;
  if (depth == Shown(-now.depth)) deep = -now.depth;
  if (depth == Shown(thick) && deep > thick) deep = thick;
  if (deep > thick) return false;
  PutNumber(kPlateStock, thick);
  PutNumber(kPlateCutDepth, -deep);
  return true;
}

bool MayDeleteFeature(int k) {
  if (k < 0 || k >= kMaxPlateFeatures) return false;
  if (plate.features[k].locked) SayOnPlate(kUnlockFeature);
  return !plate.features[k].locked;
}

bool MoveFeature(int k, double x, double y) {
  if (k < 0 || k >= kMaxPlateFeatures) return false;
  if (plate.features[k].locked || plate.features[k].deleted) return false;
  if (!(std::fabs(x) < kMostTyped && std::fabs(y) < kMostTyped)) return false;
  PlaceFeature(k, x * InchesPerUnit(plate), y * InchesPerUnit(plate));
  return true;
}

std::u16string FeatureRowWords(const PlateRecord& record, int k) {
  return u"Feature " + IntegerText(k + 1) +
         (record.features[k].through ? u"  ·  Through" : u"  ·  Blind");
}

}  // namespace morva
