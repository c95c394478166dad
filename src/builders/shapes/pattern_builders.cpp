#include "builders/shapes/pattern_builders.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/outlets.h"
#include "builders/shapes/pattern_text.h"
#include "builders/shapes/shape_record.h"
#include "builders/shapes/shape_text.h"
#include "cad/model/cad_form.h"
#include "cad/model/tool_state.h"
#include "cad/panel/pattern_form.h"
#include "documents/builder.h"
#include "documents/edit_link.h"
#include "library/shapes.h"
#include "library/units.h"
#include "platform/message.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

// Ids of the fields, by their numbers.
constexpr int kCircularIds[kCircularNumbers] = {
    kIdCadCircSize,     kIdCadCircWidth,    kIdCadCircX,     kIdCadCircY,
    kIdCadCircDiameter, kIdCadCircQuantity, kIdCadCircStart, kIdCadCircRotation,
    kIdCadCircDepth,    kIdCadCircFeed,     kIdCadCircSafeZ};
constexpr int kGridIds[kGridNumbers] = {kIdCadRectSize,  kIdCadRectWidth,    kIdCadRectRotation,
                                        kIdCadRectX,     kIdCadRectY,        kIdCadRectColumns,
                                        kIdCadRectRows,  kIdCadRectSpacingX, kIdCadRectSpacingY,
                                        kIdCadRectDepth, kIdCadRectFeed,     kIdCadRectSafeZ};

std::int64_t DataOf(int row) {
  const auto builtIn = static_cast<int>(PatternItems().size());
  return row < builtIn ? row : kCustomShapeData + row - builtIn;
}

// The item of a list's row. A row that the list does not have counts as the first.
PatternItem ItemOf(int row) {
  const auto builtIn = static_cast<int>(PatternItems().size());
  const bool known = row >= 0 && row < builtIn;
  return {known ? static_cast<ItemShape>(row) : ItemShape::Circle,
          row < 0 ? nullptr : SavedShapeOf(DataOf(row))};
}

CircularValues Circular(const FormValues& form) {
  const auto orientation = static_cast<Orientation>(form.choices[kPatternOrientation]);
  return CircularOf(ItemOf(form.choices[kPatternItem]), orientation, form);
}

GridValues Grid(const FormValues& form) { return GridOf(ItemOf(form.choices[kPatternItem]), form); }

// False: nothing is chosen, or a saved shape that is gone or cuts nothing.
bool HasItem(const FormValues& form, int list, Refusal& refusal) {
  const int row = form.choices[kPatternItem];
  const SavedShape* saved = row < 0 ? nullptr : SavedShapeOf(DataOf(row));
  refusal.field = list;
  if (saved && saved->count > 0 && !CutsAnything(*saved)) {
    refusal.words = kNothingToCut;
    return false;
  }
  if (row >= 0 && (DataOf(row) < kCustomShapeData || saved)) return true;
  refusal.words =
      u"Choose the pattern's item in the list first. A saved shape that the library no longer "
      u"holds cannot be cut.";
  return false;
}

bool Passes(const BuilderFault& fault, std::span<const int> ids, Refusal& refusal) {
  refusal.words = fault.words;
  if (fault.field >= 0) refusal.field = ids[static_cast<std::size_t>(fault.field)];
  return fault.field < 0;
}

// While the source is the selected geometry only CREATE SKETCH PATTERN makes something: the picture
// shows that. False: what the code cuts is drawn.
bool TakesSelection(int panelMode) {
  const std::int32_t own = panelMode == kPanelRectangular ? kKindRectangular : kKindCircular;
  return editLink.kind != own && PatternSourceIsSelection(panelMode);
}

// The code repeats what the list says; a selected object is laid out in the drawing alone. The form
// of a block under edit is that of its record, which has an item.
bool RepeatsItsList(int panelMode, Refusal& refusal) {
  if (!TakesSelection(panelMode)) return true;
  refusal.words =
      u"The code repeats the item of the list. Set the source to the shape library first, or press "
      u"CREATE SKETCH PATTERN.";
  refusal.field = kIdCadPatternSource;
  return false;
}

bool CheckCircularForm(const FormValues& form, Refusal& refusal) {
  return RepeatsItsList(kPanelCircular, refusal) && HasItem(form, kIdCircularItem, refusal) &&
         Passes(CheckCircular(Circular(form)), kCircularIds, refusal);
}

bool CheckGridForm(const FormValues& form, Refusal& refusal) {
  return RepeatsItsList(kPanelRectangular, refusal) && HasItem(form, kIdRectItem, refusal) &&
         Passes(CheckGrid(Grid(form)), kGridIds, refusal);
}

bool StoreItem(FeatureSettings& record) { return StoreShape(DataOf(record.a), record); }

// A number of items that cannot be had is held to one that can.
void TellCount(const char16_t* field, double typed, std::int64_t counts) {
  if (typed == static_cast<double>(counts)) return;
  AppendOutput(field + std::u16string(u" ") + FixedText(typed, 0) + u" counts as " +
               IntegerText(counts) + u".");
}

// The code has three decimals: closer items are cut again and again in one place.
bool IsNoStep(double step) { return Printed(step, 3) == 0; }

void TellCircular(const FormValues& form, bool) {
  const CircularValues values = Circular(form);
  const int quantity = CircularQuantity(values);
  TellCount(u"Quantity", form.numbers[kCircularQuantity], quantity);
  if (quantity > 1 && IsNoStep(values.numbers[kCircularDiameter])) {
    AppendOutput(u"All items lie on each other. Check the pattern's diameter.");
  }
}

// The fields of the sketch's directions stand beside those of the code.
void TellGrid(const FormValues& form, bool) {
  const GridValues values = Grid(form);
  const double columns = std::max(values.numbers[kGridColumns], 1.0);
  const double rows = std::max(values.numbers[kGridRows], 1.0);
  TellCount(u"Columns X", form.numbers[kGridColumns], static_cast<std::int64_t>(columns));
  TellCount(u"Rows Y", form.numbers[kGridRows], static_cast<std::int64_t>(rows));
  if ((columns > 1 && IsNoStep(values.numbers[kGridStepX])) ||
      (rows > 1 && IsNoStep(values.numbers[kGridStepY]))) {
    AppendOutput(u"Items lie on each other. Check the spacings of the grid.");
  }
  const PatternDirections directions = SketchPatternDirections();
  if (directions.x == 0 && directions.y == 90) return;
  AppendOutput(u"The code's rows run along X and Y; the two directions count for the sketch only.");
}

// The selected object as an item, in inches as saved shapes are. False: the picture says why.
bool TakeSelection(int panelMode, bool metric, PatternItem& item, Picture& picture) {
  static SavedShape shape;
  if (!SelectedPatternItem(panelMode, shape.objects[0])) {
    AddLabel(picture, {}, u"No object is selected that this pattern repeats.");
    return false;
  }
  if (shape.objects[0].type == kTypeCircle) {  // measured by its diameter
    item = {ItemShape::Circle, nullptr};
    return true;
  }
  ScaleLengths(shape.objects[0], metric ? 1 / kMmPerInch : 1);
  shape.count = 1;
  item = {ItemShape::Circle, &shape};
  return true;
}

void DrawCircularForm(const FormValues& form, Picture& picture) {
  CircularValues values = Circular(form);
  if (TakesSelection(kPanelCircular) &&
      !TakeSelection(kPanelCircular, form.metric, values.item, picture)) {
    return;
  }
  DrawCircular(values, picture);
}

// What the code cuts, and where the sketch's directions are others, dashed, what CREATE makes.
void DrawGridForm(const FormValues& form, Picture& picture) {
  GridValues code = Grid(form);
  GridValues created = code;
  const PatternDirections directions = SketchPatternDirections();
  created.directionX = directions.x;
  created.directionY = directions.y;
  if (TakesSelection(kPanelRectangular)) {
    if (!TakeSelection(kPanelRectangular, form.metric, created.item, picture)) return;
    return DrawGrid(created, picture);
  }
  DrawGrid(code, picture);
  const bool own = editLink.kind == kKindRectangular;
  if (!own && (directions.x != code.directionX || directions.y != code.directionY)) {
    DrawGridItems(created, Ink::Construction, u"sketch", picture);
  }
}

constexpr Command kCircularCommands[] = {
    {.id = kIdCircularItem, .hint = Hint::Quiet},
    {.id = kIdCircularInsert,
     .words = u"INSERT CIRCULAR PATTERN",
     .help = u"Write the pattern's code into the program",
     .wordsOn = u"UPDATE PATTERN"},
    {.id = kIdCircularOrientation, .hint = Hint::Quiet},
};
constexpr Command kGridCommands[] = {
    {.id = kIdRectItem, .hint = Hint::Quiet},
    {.id = kIdRectInsert,
     .words = u"INSERT RECTANGULAR PATTERN",
     .help = u"Write the grid's code into the program, rows along X and columns along Y",
     .wordsOn = u"UPDATE PATTERN"},
};

}  // namespace

constexpr Builder kCircularBuilder{
    .kind = kKindCircular,
    .title = kCircularTitle,
    .form = &kCadForm,
    .readPage = kReadCircle,
    .wholeNumbers = true,
    .insertKey = kIdCircularInsert,
    .commands = kCircularCommands,
    .logged =
        u"Circular Pattern inserted with item rotation/orientation. Verify pattern diameter, "
        u"spacing, cutter compensation, and clearances.",
    .check = CheckCircularForm,
    .write = [](const FormValues& form, CodeWriter& out) { WriteCircular(Circular(form), out); },
    .draw = DrawCircularForm,
    .pictureView = kViewCircularPicture,
    .metric = UnitsMetric,
    .takeUnit = SetUnits,
    .modeOf = [](const FormValues&) { return int{kModeCircular}; },
    .room = [](const FormValues& form) { return CircularRoom(Circular(form)); },
    .storeItems = StoreItem,
    .inserted = TellCircular,
};

constexpr Builder kGridBuilder{
    .kind = kKindRectangular,
    .title = kGridTitle,
    .form = &kCadForm,
    .readPage = kReadGrid,
    .wholeNumbers = true,
    .insertKey = kIdRectInsert,
    .commands = kGridCommands,
    .logged =
        u"Rectangular Pattern inserted. Verify X/Y spacing, rotation, work offset, tool "
        u"compensation, and clearances.",
    .check = CheckGridForm,
    .write = [](const FormValues& form, CodeWriter& out) { WriteGrid(Grid(form), out); },
    .draw = DrawGridForm,
    .pictureView = kViewRectPicture,
    .metric = UnitsMetric,
    .takeUnit = SetUnits,
    .modeOf = [](const FormValues&) { return int{kModeRectangular}; },
    .room = [](const FormValues& form) { return GridRoom(Grid(form)); },
    .storeItems = StoreItem,
    .inserted = TellGrid,
};

void RegisterPatternBuilders() {
  RegisterBuilder<kCircularBuilder>();
  RegisterBuilder<kGridBuilder>();
}

}  // namespace morva
