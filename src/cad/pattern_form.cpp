#include "cad/pattern_form.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/drawings.h"
#include "cad/edit_parts.h"
#include "cad/patterns.h"
#include "cad/sketch.h"
#include "cad/sketch_units.h"
#include "cad/tool_state.h"
#include "documents/feature_settings.h"
#include "documents/insertion.h"
#include "library/item_places.h"
#include "library/motion_text.h"
#include "library/outline.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr const char16_t* kShapes[] = {u"Circle",   u"Square",  u"Rectangle",
                                       u"Triangle", u"Diamond", u"Slot"};
constexpr const char16_t* kOrientations[] = {u"Fixed angle", u"Radial", u"Tangential"};

constexpr int kCutDecimals = 4;
constexpr int kSizeDecimals = 6;   // of sizes taken over from an object,
constexpr int kLeastDecimals = 3;  // without zeros behind these
constexpr double kNoLength = 0.5;  // what a size or a width that is no number counts as until
constexpr double kNoWidth = 0.25;  // the fields are looked at one by one

// Whether the form of the circular and of the rectangular kind takes the selected object.
bool fromSelection[2];

// The numbers of a form, by their fields. A field of 0 is none of this kind.
struct FormIds {
  int shape, size, width, rotation, x, y, depth, feed, safeZ;
  int counts[2];
  int lengths[2];  // the pattern diameter; the two spacings
  int start;
};
constexpr FormIds kForms[2] = {
    {kIdCadCircShape,
     kIdCadCircSize,
     kIdCadCircWidth,
     kIdCadCircRotation,
     kIdCadCircX,
     kIdCadCircY,
     kIdCadCircDepth,
     kIdCadCircFeed,
     kIdCadCircSafeZ,
     {kIdCadCircQuantity, 0},
     {kIdCadCircDiameter, 0},
     kIdCadCircStart},
    {kIdCadRectShape,
     kIdCadRectSize,
     kIdCadRectWidth,
     kIdCadRectRotation,
     kIdCadRectX,
     kIdCadRectY,
     kIdCadRectDepth,
     kIdCadRectFeed,
     kIdCadRectSafeZ,
     {kIdCadRectColumns, kIdCadRectRows},
     {kIdCadRectSpacingX, kIdCadRectSpacingY},
     0},
};

struct FormValues {
  double rotation = 0, x = 0, y = 0, depth = 0, feed = 0, safeZ = 0, start = 0;
  double counts[2] = {1, 1};
  double lengths[2] = {0, 0};
  double directions[2] = {0, 90};
};

// Objects about the item's own centre, at most the lines of a diamond.
struct Source {
  SketchObject objects[4];
  int count = 0;
};

SketchObject results[kMaxItems + 1];

bool Refuse(const char16_t* words) {
  SetSketchStatus(words);
  return false;
}

bool Lies(double value, double limit) { return std::fabs(value) < limit; }

bool ShapeSource(const FormIds& form, Source& source) {
  const double width = SketchField(form.size, kNoLength);
  const double typed = SketchField(form.width, kNoWidth);
  const double height = typed == 0 ? width : typed;
  if (!(width > 0) || !Lies(width, kSketchLimit) || !Lies(height, kSketchLimit)) return false;
  const auto shape = static_cast<ItemShape>(platform::SelectedRow(form.shape));
  SketchObject& object = source.objects[0];
  source.count = 1;
  object.size = width;
  switch (shape) {
    case ItemShape::Circle:
      object.type = kTypeCircle;
      return true;
    case ItemShape::Square:
    case ItemShape::Rectangle:
      object.type = kTypeRectangle;
      object.size2 = shape == ItemShape::Square ? width : height;
      return object.size2 > 0;
    case ItemShape::Slot:
      object.type = kTypeSlot;
      object.size2 = height;
      return height > 0;
    case ItemShape::Triangle:
    case ItemShape::Diamond:
      break;
    default:
      return false;
  }
  if (!(height > 0)) return false;
  double xs[4];
  double ys[4];
  source.count = ShapeCorners(shape, width, height, xs, ys);
  for (int i = 0; i < source.count; ++i) {
    const int next = (i + 1) % source.count;
    source.objects[i].type = kTypeLine;
    SetLineEnds(source.objects[i], xs[i], ys[i], xs[next], ys[next]);
  }
  return true;
}

// The selected object alone, whatever its group, with the sizes of the form.
bool SelectionSource(const FormIds& form, Source& source) {
  SketchObject object = sketch.objects[sketch.selected];
  object.x = 0;
  object.y = 0;
  object.size = SketchField(form.size, kNoLength);
  const double width = SketchField(form.width, kNoWidth);
  if (object.type == kTypeWorkPoint || !(object.size > 0) || !Lies(object.size, kSketchLimit)) {
    return false;
  }
  if (HasTwoSizes(object)) {
    object.size2 = width;
    if (!(width > 0) || !Lies(width, kSketchLimit)) return false;
    if (object.type == kTypeSlot && width > object.size) return false;
  }
  source.objects[0] = object;
  source.count = 1;
  return true;
}

bool ReadSource(const FormIds& form, bool selection, Source& source) {
  // A locked selection says so itself.
  if (selection && HasSketchSelection() && !MayEditSelection()) return false;
  const bool made =
      selection ? HasSketchSelection() && SelectionSource(form, source) : ShapeSource(form, source);
  return made || Refuse(u"Choose valid shape dimensions or select unlocked geometry.");
}

bool ReadField(int id, double& value) { return id == 0 || ReadStrictField(id, value); }

bool ReadNumbers(const FormIds& form, FormValues& values) {
  double size = 0;
  double width = 0;
  const bool read = ReadField(form.size, size) && ReadField(form.width, width) &&
                    ReadField(form.rotation, values.rotation) && ReadField(form.x, values.x) &&
                    ReadField(form.y, values.y) && ReadField(form.depth, values.depth) &&
                    ReadField(form.feed, values.feed) && ReadField(form.safeZ, values.safeZ) &&
                    ReadField(form.start, values.start) &&
                    ReadField(form.counts[0], values.counts[0]) &&
                    ReadField(form.counts[1], values.counts[1]) &&
                    ReadField(form.lengths[0], values.lengths[0]) &&
                    ReadField(form.lengths[1], values.lengths[1]);
  return read || Refuse(u"Pattern fields require finite numeric values.");
}

bool CountsFit(const FormValues& values, const Source& source, bool selection) {
  for (const double count : values.counts) {
    if (!(count > 0) || count != std::floor(count)) {
      return Refuse(u"Use positive whole-number pattern quantities.");
    }
  }
  // The selected object's own place is one of those that the pattern fills.
  const int room = kMaxItems - sketch.objectCount + (selection ? 1 : 0);
  const double wanted = source.count * values.counts[0] * values.counts[1];
  if (values.counts[0] > kMaxItems || values.counts[1] > kMaxItems || wanted > room) {
    return Refuse(
        u"Pattern exceeds the sketch's 96 geometry objects. Reduce the count; no partial pattern "
        u"was created.");
  }
  return true;
}

bool ReadDirections(FormValues& values) {
  for (int i = 0; i < 2; ++i) {
    const int id = i == 0 ? kIdCadDirection1 : kIdCadDirection2;
    const std::u16string text = platform::TextOf(id);
    if (!text.empty() && !ReadStrictNumber(text, values.directions[i])) {
      return Refuse(u"Enter numeric direction angles.");
    }
  }
  return true;
}

// Where an item's centre lies and how far it is turned, in `angle`.
ItemPlace CirclePlace(const FormValues& values, int item) {
  ItemPlace place =
      PlaceOnCircle({values.x, values.y, values.lengths[0], values.start, values.counts[0]}, item);
  const auto orientation = static_cast<Orientation>(platform::SelectedRow(kIdCadCircOrientation));
  place.angle = ItemTurn(orientation, values.rotation, place.angle);
  return place;
}

ItemPlace GridPlace(const FormValues& values, int item) {
  const int columns = static_cast<int>(values.counts[0]);
  ItemPlace place = PlaceInGrid({values.x, values.y, columns, values.lengths[0], values.lengths[1],
                                 values.directions[0], values.directions[1]},
                                item);
  place.angle = values.rotation;
  return place;
}

// Every object of every item. False: one would leave the sketch.
bool LayOut(const FormValues& values, const Source& source, bool rectangular, int& count) {
  const int items = static_cast<int>(values.counts[0] * values.counts[1]);
  count = 0;
  for (int item = 0; item < items; ++item) {
    const ItemPlace place = rectangular ? GridPlace(values, item) : CirclePlace(values, item);
    for (int i = 0; i < source.count; ++i) {
      SketchObject& object = results[count++];
      object = source.objects[i];
      RotatePoint(place.x, place.y, source.objects[i].x, source.objects[i].y, place.angle, object.x,
                  object.y);
      object.angle += place.angle;
      if (!WithinSketchLimit(object)) {
        return Refuse(u"Pattern extent exceeds the sketch coordinate limit.");
      }
    }
  }
  return true;
}

void PutResults(int count, bool selection) {
  PushSketchUndo();
  const int firstNew = sketch.objectCount;
  if (selection) sketch.objects[sketch.selected] = results[0];
  for (int i = selection ? 1 : 0; i < count; ++i) AppendSketchObject(results[i]);
  if (selection) return;
  ClearMultiSelect();
  sketch.selected = firstNew;
}

// A size with all its digits, but no zeros behind the third.
std::u16string SizeText(double value) {
  std::u16string text = SketchNumber(value, kSizeDecimals);
  for (int i = kSizeDecimals; i > kLeastDecimals && text.back() == u'0'; --i) text.pop_back();
  return text;
}

void FillList(int id, const char16_t* const* rows, int count, int chosen) {
  if (!platform::Exists(id) || platform::RowCount(id) > 0) return;
  for (int i = 0; i < count; ++i) platform::AddRow(id, rows[i], i);
  platform::SelectRow(id, chosen);
}

bool PatternBlockIsOpen() {
  return editLink.kind == kKindCircular || editLink.kind == kKindRectangular;
}

}  // namespace

bool ApplySketchPattern(bool isRectangular) {
  const FormIds& form = kForms[isRectangular ? 1 : 0];
  const bool selection = fromSelection[isRectangular ? 1 : 0];
  Source source;
  FormValues values;
  int count = 0;
  if (!ReadSource(form, selection, source) || !ReadNumbers(form, values) ||
      !CountsFit(values, source, selection)) {
    return false;
  }
  if (!(values.feed > 0) || !(values.safeZ > values.depth) ||
      (!isRectangular && !(values.lengths[0] > 0))) {
    return Refuse(u"Use positive feed and pattern diameter; Safe Z must be above cut Z.");
  }
  if (isRectangular && !ReadDirections(values)) return false;
  if (!LayOut(values, source, isRectangular, count)) return false;
  PutResults(count, selection);
  ShowCutData({values.depth, values.feed, values.safeZ}, kCutDecimals);
  RefreshSketchPanels();
  LogSketchOperation(isRectangular ? u"Created rectangular pattern" : u"Created circular pattern");
  SetSketchStatus(
      u"Pattern is editable sketch geometry. Generate uses the pattern cutting settings.");
  return true;
}

bool PatternSourceIsSelection(int panelMode) {
  return fromSelection[panelMode == kPanelRectangular ? 1 : 0];
}

void TogglePatternSource() {
  if (editLink.kind != 0) return;
  const int kind = tools.panelMode == kPanelRectangular ? 1 : 0;
  fromSelection[kind] = !fromSelection[kind];
  if (fromSelection[kind] && HasSketchSelection()) {
    const SketchObject& object = sketch.objects[sketch.selected];
    platform::SetText(kForms[kind].size, SizeText(object.size));
    platform::SetText(kForms[kind].width, SizeText(object.size2));
  }
  RefreshPatternForm();
}

void RefreshPatternForm() {
  for (const FormIds& form : kForms) FillList(form.shape, kShapes, 6, 0);
  FillList(kIdCadCircOrientation, kOrientations, 3, static_cast<int>(Orientation::Radial));
  platform::SetText(kIdCadPatternSource, PatternSourceIsSelection(tools.panelMode)
                                             ? u"Source: selected geometry"
                                             : u"Source: shape library");
  platform::SetEnabled(kIdCadPatternSource, editLink.kind == 0);
  platform::SetText(kIdCadCreatePattern,
                    PatternBlockIsOpen() ? u"UPDATE PATTERN FEATURE" : u"CREATE SKETCH PATTERN");
}

void RegisterPatternLengths() {
  for (const int id :
       {kIdCadCircSize, kIdCadCircWidth, kIdCadCircX, kIdCadCircY, kIdCadCircDiameter,
        kIdCadCircDepth, kIdCadCircSafeZ, kIdCadRectSize, kIdCadRectWidth, kIdCadRectX, kIdCadRectY,
        kIdCadRectSpacingX, kIdCadRectSpacingY, kIdCadRectDepth, kIdCadRectSafeZ}) {
    AddSketchLengthField(id, 3);
  }
  for (const int id : {kIdCadCircFeed, kIdCadRectFeed}) AddSketchLengthField(id, 2);
}

void ResetPatterns() { fromSelection[0] = fromSelection[1] = false; }

}  // namespace morva
