#include "cad/panel/pattern_form.h"

#include <cmath>
#include <cstdint>
#include <iterator>
#include <string>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/limits.h"
#include "app/router.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/cut_data.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/tool_change.h"
#include "documents/edit_link.h"
#include "documents/feature_settings.h"
#include "forms/form.h"
#include "library/item_places.h"
#include "library/motion_text.h"
#include "library/shapes.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/length_units.h"

namespace morva {

namespace {

constexpr int kCutDecimals = 4;
constexpr int kSizeDecimals = 6;   // of sizes taken over from an object,
constexpr int kLeastDecimals = 3;  // without zeros behind these
// The item's sizes have the same places in both forms.
static_assert(int{kCircularSize} == int{kGridSize} && int{kCircularWidth} == int{kGridWidth});

// Whether the form of the circular and of the rectangular kind takes the selected object.
constexpr int kPatternPanels = 2;  // circular, rectangular
bool fromSelection[kPatternPanels];

// What the circular or the rectangular form reads.
struct Pattern {
  bool rectangular = false;
  FormValues fields;
  double counts[2] = {1, 1};
  double operator[](int place) const { return fields.numbers[place]; }
};

CutData CutOf(const Pattern& n) {
  return n.rectangular ? CutData{n[kGridDepth], n[kGridFeed], n[kGridSafeZ]}
                       : CutData{n[kCircularDepth], n[kCircularFeed], n[kCircularSafeZ]};
}

// Objects about the item's own centre, at most those of a saved shape.
struct Source {
  SketchObject objects[kMaxShapeObjects];
  int count = 0;
  bool parts = false;  // each item becomes a part of its own
};

SketchObject results[kMaxItems + 1];

bool Refuse(const char16_t* words) {
  SetSketchStatus(words);
  return false;
}

bool IsWithin(double value, double limit) { return std::fabs(value) < limit; }

constexpr ShapeRow ItemRow(ItemShape shape) {
  const auto data = static_cast<std::int64_t>(shape);
  return {kItemWords[data], data};
}
constexpr ShapeRow kShapeRows[] = {ItemRow(ItemShape::Circle),    ItemRow(ItemShape::Square),
                                   ItemRow(ItemShape::Rectangle), ItemRow(ItemShape::Triangle),
                                   ItemRow(ItemShape::Diamond),   ItemRow(ItemShape::Slot)};
constexpr int kShapeLists[] = {kIdCircularItem, kIdRectItem};

// A saved shape in its own sizes, whatever the form's say.
bool SavedSource(std::int64_t index, Source& source) {
  if (index < 0 || index >= shapeLibrary.count) return false;
  const SavedShape& shape = shapeLibrary.shapes[index];
  source.count = shape.count;
  source.parts = shape.count > 1;
  for (int i = 0; i < shape.count; ++i) {
    source.objects[i] = shape.objects[i];
    source.objects[i].group = 0;
    ScaleLengths(source.objects[i], BySketchUnit(1, kMmPerInch));
  }
  return shape.count > 0;
}

bool ShapeSource(const Pattern& n, Source& source) {
  const int list = n.rectangular ? kIdRectItem : kIdCircularItem;
  const std::int64_t row = platform::RowData(list, platform::SelectedRow(list));
  if (row >= kCustomShapeData) return SavedSource(row - kCustomShapeData, source);
  const double width = n[kCircularSize];
  const double typed = n[kCircularWidth];
  const double height = typed == 0 ? width : typed;
  if (!(width > 0) || !IsWithin(width, kSketchLimit) || !IsWithin(height, kSketchLimit))
    return false;
  const auto shape = static_cast<ItemShape>(n.fields.choices[kPatternItem]);
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
bool SelectionSource(const Pattern& n, Source& source) {
  SketchObject object = sketch.objects[sketch.selected];
  object.x = 0;
  object.y = 0;
  object.size = n[kCircularSize];
  const double width = n[kCircularWidth];
  if (object.type == kTypeWorkPoint || !(object.size > 0) || !IsWithin(object.size, kSketchLimit)) {
    return false;
  }
  if (HasTwoSizes(object)) {
    object.size2 = width;
    if (!(width > 0) || !IsWithin(width, kSketchLimit)) return false;
    if (object.type == kTypeSlot && width > object.size) return false;
  }
  source.objects[0] = object;
  source.count = 1;
  return true;
}

bool ReadFields(Pattern& n, const Reading& reading) {
  const int page = n.rectangular ? kReadSketchGrid : kReadSketchCircle;
  return ReadForm(kCadForm, page, reading, n.fields);
}

// The item's sizes are read as far as their texts are numbers.
bool ReadSource(Pattern& n, bool selection, Source& source) {
  // A locked selection says so itself.
  if (selection && HasSketchSelection() && !MayEditSelection()) return false;
  ReadFields(n, Reading::Lax);
  const bool made =
      selection ? HasSketchSelection() && SelectionSource(n, source) : ShapeSource(n, source);
  return made || Refuse(u"Choose valid shape dimensions or select unlocked geometry.");
}

bool ReadNumbers(Pattern& n) {
  if (!ReadFields(n, Reading::Strict)) {
    return Refuse(u"Pattern fields require finite numeric values.");
  }
  n.counts[0] = n.rectangular ? n[kGridColumns] : n[kCircularQuantity];
  if (n.rectangular) n.counts[1] = n[kGridRows];
  return true;
}

bool CountsFit(const Pattern& values, const Source& source, bool selection) {
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

bool ReadDirections(Pattern& n) {
  return ReadForm(kCadForm, kReadDirections, Reading::Strict, n.fields) ||
         Refuse(u"Enter numeric direction angles.");
}

// Where an item's centre lies and how far it is turned, in `angle`.
ItemPlace CirclePlace(const Pattern& n, int item) {
  ItemPlace place = PlaceOnCircle(
      {n[kCircularX], n[kCircularY], n[kCircularDiameter], n[kCircularStart], n.counts[0]}, item);
  const auto orientation = static_cast<Orientation>(n.fields.choices[kPatternOrientation]);
  place.angle = ItemTurn(orientation, n[kCircularTurn], place.angle);
  return place;
}

ItemPlace GridPlace(const Pattern& n, int item) {
  const GridPlaces grid{n[kGridX],         n[kGridY],     static_cast<int>(n.counts[0]),
                        n[kGridStepX],     n[kGridStepY], n[kGridDirectionX],
                        n[kGridDirectionY]};
  ItemPlace place = PlaceInGrid(grid, item);
  place.angle = n[kGridTurn];
  return place;
}

// Every object of every item. False: one would leave the sketch.
bool LayOut(const Pattern& values, const Source& source, int& count) {
  const int items = static_cast<int>(values.counts[0] * values.counts[1]);
  const std::int32_t firstPart = source.parts ? NextSketchGroup() : 0;
  count = 0;
  for (int item = 0; item < items; ++item) {
    const ItemPlace place =
        values.rectangular ? GridPlace(values, item) : CirclePlace(values, item);
    for (int i = 0; i < source.count; ++i) {
      SketchObject& object = results[count++];
      object = source.objects[i];
      if (source.parts) object.group = firstPart + item;
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
  if (selection) PutSketchObject(sketch.selected, results[0]);
  for (int i = selection ? 1 : 0; i < count; ++i) AppendSketchObject(results[i]);
  if (selection) return;
  ClearMultiSelect();
  SetSelected(firstNew);
}

// A size with all its digits, but no zeros behind the third.
std::u16string SizeText(double value) {
  std::u16string text = SketchNumber(value, kSizeDecimals);
  for (int i = kSizeDecimals; i > kLeastDecimals && text.back() == u'0'; --i) text.pop_back();
  return text;
}

bool GridIsUp() { return tools.panelMode == kPanelRectangular; }

// A block of the kind of the form that is up.
bool PatternBlockIsOpen() {
  return editLink.kind == (GridIsUp() ? kKindRectangular : kKindCircular);
}

void OnPanel(int id, int) {
  OpenPatternPanel(id == kIdCadCircularPanel ? kPanelCircular : kPanelRectangular, false);
}

// While a block is under edit the key says that it updates the block, as the other one does.
void OnCreate() {
  if (!PatternBlockIsOpen()) {
    ApplySketchPattern(GridIsUp());
  } else {
    RouteCommand(GridIsUp() ? kIdRectInsert : kIdCircularInsert, platform::kNotifyClick);
  }
}

void OnForm(int id, int) {
  if (id == kIdCadPatternSource) TogglePatternSource();
  if (id == kIdCadCreatePattern) OnCreate();
}

}  // namespace

void RepaintPatternPictures() {
  for (const int view : {kViewCircularPicture, kViewRectPicture}) {
    if (platform::IsVisible(view)) platform::Repaint(view);
  }
}

bool ApplySketchPattern(bool isRectangular) {
  const bool selection = fromSelection[isRectangular ? 1 : 0];
  Source source;
  Pattern values;
  values.rectangular = isRectangular;
  int count = 0;
  if (!ReadSource(values, selection, source) || !ReadNumbers(values) ||
      !CountsFit(values, source, selection)) {
    return false;
  }
  const CutData cut = CutOf(values);
  if (!(cut.feed > 0) || !(cut.safeZ > cut.depth) ||
      (!isRectangular && !(values[kCircularDiameter] > 0))) {
    return Refuse(u"Use positive feed and pattern diameter; Safe Z must be above cut Z.");
  }
  if (isRectangular && !tools.patternAlone && !ReadDirections(values)) return false;
  if (isRectangular && tools.patternAlone) {
    const PatternDirections directions = SketchPatternDirections();
    values.fields.numbers[kGridDirectionX] = directions.x;
    values.fields.numbers[kGridDirectionY] = directions.y;
  }
  if (!LayOut(values, source, count)) return false;
  PutResults(count, selection);
  ShowCutData(cut, kCutDecimals);
  RefreshSketchPanels();
  LogSketchOperation(isRectangular ? u"Created rectangular pattern" : u"Created circular pattern");
  SetSketchStatus(kPatternNote);
  return true;
}

void OpenPatternPanel(int panelMode, bool alone) {
  if (panelMode != kPanelCircular && panelMode != kPanelRectangular) return;
  const bool circular = panelMode == kPanelCircular;
  SetPatternAlone(alone);
  if (alone) {
    OpenToolPanel(panelMode, circular ? kIdCircularItem : kIdRectItem);
  } else {
    OpenToolPanel(panelMode, circular ? kIdCadQuantity : kIdCadColumns);
  }
  RefreshPatternForm();
}

bool SelectedPatternItem(int panelMode, SketchObject& item) {
  Pattern values;
  values.rectangular = panelMode == kPanelRectangular;
  ReadFields(values, Reading::Lax);
  Source source;
  if (!HasSketchSelection() || !SelectionSource(values, source)) return false;
  item = source.objects[0];
  return true;
}

PatternDirections SketchPatternDirections() {
  // The form of the pattern builder has no directions: its grid runs along X and Y.
  if (tools.patternAlone) return {};
  return {FieldNumber(kIdCadDirection1, 0), FieldNumber(kIdCadDirection2, 90)};
}

bool PatternSourceIsSelection(int panelMode) {
  return fromSelection[panelMode == kPanelRectangular ? 1 : 0];
}

void TogglePatternSource() {
  if (PatternBlockIsOpen()) return;
  const int kind = tools.panelMode == kPanelRectangular ? 1 : 0;
  fromSelection[kind] = !fromSelection[kind];
  if (fromSelection[kind] && HasSketchSelection()) {
    const SketchObject& object = sketch.objects[sketch.selected];
    const bool grid = kind != 0;
    platform::SetText(grid ? kIdCadRectSize : kIdCadCircSize, SizeText(object.size));
    platform::SetText(grid ? kIdCadRectWidth : kIdCadCircWidth, SizeText(object.size2));
  }
  RefreshPatternForm();
}

void RefreshPatternForm() {
  const bool block = PatternBlockIsOpen();
  ShowWords(kIdCadPatternSource, !block && PatternSourceIsSelection(tools.panelMode));
  platform::SetEnabled(kIdCadPatternSource, !block);
  ShowWords(kIdCadCreatePattern, PatternBlockIsOpen());
  RepaintPatternPictures();
}

void FillPatternLists() {
  for (const int list : kShapeLists) {
    if (platform::Exists(list)) FillShapeList(list, kShapeRows, std::size(kShapeRows));
  }
  RepaintPatternPictures();
}

void RegisterPatternForm() {
  AddShapeList(FillPatternLists);
  RegisterCommand(RouterStage::Builder, kIdCadCircularPanel, kIdCadGridPanel,
                  platform::kNotifyClick, OnPanel);
  RegisterCommand(RouterStage::Builder, kIdCadPatternSource, kIdCadCreatePattern,
                  platform::kNotifyClick, OnForm);
}

void ResetPatternForm() { fromSelection[0] = fromSelection[1] = false; }

}  // namespace morva
