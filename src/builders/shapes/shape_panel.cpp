#include "builders/shapes/shape_panel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/hooks.h"
#include "app/icon_names.h"
#include "app/outlets.h"
#include "app/router.h"
#include "builders/shapes/shape_record.h"
#include "builders/shapes/shape_text.h"
#include "documents/builder.h"
#include "documents/edit_link.h"
#include "library/shape_menu.h"
#include "library/shapes.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kRefreshMs = 70;
constexpr int kBuiltInShapes = kShapeSaved;  // rows of the list before the saved ones
constexpr int kPictureLeast = 120;           // pixels

// What the user is told about a field of any shape, by its place in the form.
constexpr const char16_t* kHelp[kShapeNumbers] = {
    u"Where the shape stands along X; the picture marks the place",
    u"Where the shape stands along Y; the picture marks the place",
    u"A size of the shape, as the picture shows it",
    u"The other size of the shape, as the picture shows it",
    u"Z of the cut, below the Safe Z",
    u"Feed of plunge and cut, a minute",
    u"Z of rapid moves, above everything in the way"};
constexpr char16_t kAroundHelp[] = u"Makes the circle only while the radius is 0";

const char16_t* HelpOf(int kind, int field) {
  return kind == kShapeCircle && field == kShapeSize2 ? kAroundHelp : kHelp[field];
}

FormRow RowOf(int kind, int field) {
  const BuilderField& said = ShapeFields(kind)[static_cast<std::size_t>(field)];
  return {.kind = said.kind,
          .id = kIdShapeField + field,
          .label = said.label,
          .help = HelpOf(kind, field),
          .start = kind == kShapeSaved ? u"" : said.start,
          // Those of a saved shape depend on it.
          .filled = kind == kShapeSaved,
          .fallback = said.fallback,
          .follows = said.follows,
          .decimals = said.decimals,
          .value = field,
          .pages = PageBit(kind),
          .enter = kIdShapeInsert,
          // Their labels are too long for half a line.
          .half = kind != kShapeSaved || (field != kShapeSize && field != kShapeSize2)};
}

// One row for the kinds that say the same of this field.
void AddField(std::vector<FormRow>& rows, int field) {
  const std::size_t first = rows.size();
  for (int kind = 0; kind < kShapeKinds; ++kind) {
    const FormRow row = RowOf(kind, field);
    if (!row.label[0]) continue;
    const auto same = std::find_if(rows.begin() + static_cast<std::ptrdiff_t>(first), rows.end(),
                                   [&row](const FormRow& other) {
                                     return other.label == row.label && other.start == row.start &&
                                            other.help == row.help && other.filled == row.filled;
                                   });
    if (same == rows.end()) {
      rows.push_back(row);
    } else {
      same->pages |= row.pages;
    }
  }
}

const std::vector<FormRow>& ShapeRows() {
  static const std::vector<FormRow> kRows = [] {
    std::vector<FormRow> rows;
    const int quick = kIdQuickShapeFirst;
    rows.push_back({.kind = RowKind::Keys,
                    .keys = {quick, quick + 1, quick + 2, quick + 3},
                    .shares = {6, 8, 5, 7}});
    rows.push_back({.kind = RowKind::Keys,
                    .keys = {quick + 4, quick + 5, quick + 6, kIdCustomShapes},
                    .shares = {39, 77, 39, 125}});
    rows.push_back({.kind = RowKind::Choice,
                    .id = kIdShapeCombo,
                    .name = u"Shape",
                    .help = u"What is cut: a shape of these fields, or one that you saved",
                    .choice = 0,
                    .picks = kShapeKinds,
                    .above = 4});
    for (int field = 0; field < kShapeNumbers; ++field) AddField(rows, field);
    rows.push_back({.kind = RowKind::Keys, .keys = {kIdBuilderInch, kIdBuilderMm}});
    rows.push_back({.kind = RowKind::View,
                    .id = kViewShapePicture,
                    .name = u"Shape preview",
                    .className = u"MorvaShapePreview",
                    .least = kPictureLeast,
                    .fixed = true});
    rows.push_back({.kind = RowKind::Keys, .keys = {kIdShapeInsert}, .fixed = true});
    return rows;
  }();
  return kRows;
}

// What the list and the sizes of a saved shape said when the program wrote them last.
struct Filled {
  int lastShape = kShapeSquare;        // row that was chosen last, Slot aside
  int row = -1;                        // of the saved shape whose place and sizes were filled in
  double extents[kShapeNumbers] = {};  // inches, of the two sizes
};
Filled filled;

std::int64_t DataOf(int row) {
  if (row < kBuiltInShapes) return row;
  return kCustomShapeData + row - kBuiltInShapes;
}

const SavedShape* SavedAt(int row) { return row < 0 ? nullptr : SavedShapeOf(DataOf(row)); }

ShapeValues ValuesOf(const FormValues& form) {
  const int row = form.choices[0];
  return ShapeOf(row < kBuiltInShapes ? row : kShapeSaved, form, SavedAt(row));
}

// Place and sizes of a saved shape that was just chosen.
void StartSaved(const SavedShape& saved) {
  for (int field = 0; field < kShapeNumbers; ++field) {
    platform::SetText(kIdShapeField + field, SavedShapeStart(saved, UnitsMetric(), field));
  }
  for (const int field : {kShapeSize, kShapeSize2}) {
    filled.extents[field] = SavedExtent(saved, field);
  }
}

// The shape was saved anew, with other extents: sizes that nobody has typed follow.
void FollowSaved(const SavedShape& saved) {
  for (const int field : {kShapeSize, kShapeSize2}) {
    const int id = kIdShapeField + field;
    const double size = FieldNumber(id, -1);
    if (!ShowsExtent(filled.extents[field], size, UnitsMetric())) continue;
    filled.extents[field] = SavedExtent(saved, field);
    platform::SetText(id, SavedShapeStart(saved, UnitsMetric(), field));
  }
}

void FillShapes() {
  if (!platform::Exists(kIdShapeCombo)) return;
  const bool first = platform::RowCount(kIdShapeCombo) == 0;
  int count = 0;
  const ShapeRow* rows = BuiltInShapeRows(count);
  // Those of a block that was opened are the block's own, whatever shape is saved.
  const bool own = ChosenShape() >= 0 && ChosenShape() == filled.row;
  FillShapeList(kIdShapeCombo, rows, count);
  if (first) platform::SelectRow(kIdShapeCombo, kShapeSquare);
  if (own) filled.row = ChosenShape();
  if (const SavedShape* saved = SavedAt(ChosenShape()); saved && own) FollowSaved(*saved);
  platform::Repaint(kViewShapePicture);
}

void OnChanged(int id) {
  if (id != kIdShapeCombo) return;
  const int row = ChosenShape();
  const SavedShape* saved = SavedAt(row);
  filled.row = saved ? row : -1;
  if (saved) StartSaved(*saved);
  platform::Repaint(kViewShapePicture);
  if (row < 0 || row == kShapeSlot) return;
  filled.lastShape = row;
  // The slot builder holds the list at Slot: another shape is one of the other mode.
  if (app.mode == kModeSlot) Call(hooks.setMode, static_cast<int>(kModeShapes));
}

const Form kForm{.sheet = &kBuilderSheet,
                 .rows = ShapeRows(),
                 .metric = UnitsMetric,
                 .takeUnit = SetUnits,
                 .changed = OnChanged};

bool IsQuickShape(int id) { return ChosenShape() == id - kIdQuickShapeFirst; }
bool IsSavedChosen(int) { return SavedAt(ChosenShape()) != nullptr; }

constexpr Command Quick(int kind, const char16_t* words, const char16_t* help) {
  return {.id = kIdQuickShapeFirst + kind, .words = words, .help = help, .on = IsQuickShape};
}

constexpr Command kCommands[] = {
    {.id = kIdShapeCombo, .hint = Hint::Quiet},
    {.id = kIdShapeInsert,
     .words = u"INSERT SHAPE G-CODE",
     .help = u"Write the shape into the program",
     .wordsOn = u"UPDATE SHAPE"},
    Quick(kShapeSquare, u"Square", u"A square from its lower left corner"),
    Quick(kShapeRectangle, u"Rectangle", u"A rectangle from its lower left corner"),
    Quick(kShapeCircle, u"Circle", u"A circle about its center"),
    Quick(kShapeTriangle, u"Triangle", u"A triangle on its base, its top over the middle"),
    Quick(kShapeLine, u"Line", u"A line from its start"),
    Quick(kShapeDiamond, u"Diamond", u"A diamond about its center"),
    Quick(kShapeSlot, u"Slot", u"A slot along X about its center"),
    {.id = kIdCustomShapes,
     .words = u"Custom shapes",
     .help = u"The shapes that you saved from drawings",
     .on = IsSavedChosen},
    {.id = kIdCustomShapeFirst, .words = u"Saved shape", .last = kIdCustomShapeLast},
};

bool Check(const FormValues& form, Refusal& refusal) {
  const int row = form.choices[0];
  if (row < 0 || (row >= kBuiltInShapes && !SavedAt(row))) {
    refusal.words =
        u"Choose a shape in the list first. A saved shape that the library no longer holds cannot "
        u"be cut.";
    refusal.field = kIdShapeCombo;
    return false;
  }
  if (const SavedShape* saved = SavedAt(row); saved && saved->count > 0 && !CutsAnything(*saved)) {
    refusal.words = kNothingToCut;
    refusal.field = kIdShapeCombo;
    return false;
  }
  const BuilderFault fault = CheckShape(ValuesOf(form));
  refusal.words = fault.words;
  if (fault.field >= 0) refusal.field = kIdShapeField + fault.field;
  return fault.field < 0;
}

void Write(const FormValues& form, CodeWriter& out) { WriteShape(ValuesOf(form), out); }

void Draw(const FormValues& form, Picture& picture) {
  if (form.choices[0] >= 0) DrawShape(ValuesOf(form), picture);
}

bool StoreItems(FeatureSettings& record) { return StoreShape(DataOf(record.a), record); }

// The code takes the longer of both for the length.
void TellShortSlot(const FormValues& form) {
  const double length = std::fabs(form.numbers[kShapeSize]);
  const double width = std::fabs(form.numbers[kShapeSize2]);
  if (form.choices[0] != kShapeSlot || length >= width) return;
  AppendOutput(u"Length " + FixedText(length, 3) + u" counts as " + FixedText(width, 3) +
               u": a slot is not shorter than wide.");
}

void TellInserted(const FormValues& form, bool updated) {
  TellShortSlot(form);
  if (SavedAt(form.choices[0])) {
    AppendOutput(updated ? u"Saved Custom Shape updated from the reusable shape library."
                         : u"Saved Custom Shape inserted from the reusable shape library.");
    return;
  }
  constexpr char16_t kVerify[] =
      u" Verify tool, offset, workholding, and clearances before running.";
  AppendOutput((updated ? u"Shape updated." : u"Shape inserted.") + std::u16string(kVerify));
}

// Each mode has its own shapes: the slot builder the slot, the other one all else. A block under
// edit keeps its shape.
void OnEntered() {
  if (app.mode == kModeSlot) {
    // A block that was opened chose its shape unseen.
    if (const int row = ChosenShape(); row >= 0 && row != kShapeSlot) filled.lastShape = row;
    ChooseShape(kShapeSlot);
  } else if (ChosenShape() == kShapeSlot && editLink.kind != kKindShape) {
    ChooseShape(SavedAt(filled.lastShape) || filled.lastShape < kBuiltInShapes ? filled.lastShape
                                                                               : kShapeSquare);
  }
}

constexpr const char16_t* kBuilderHelp =
    u"ACTIVE TOOL HELP\r\n\r\nAll generated code remains editable. Verify offsets, tooling, "
    u"compensation, workholding, and clearances before machining.";
constexpr ModeKey kShapeKeys[] = {{kIdOldModeFirst + 2}};
constexpr ModeKey kSlotKeys[] = {{kIdOldModeFirst + 9}};
}  // namespace

const ModeRow kShapesMode = {.mode = kModeShapes,
                             .place = 5,
                             .words = u"Shapes and slots",
                             .header = u"SHAPES / SLOTS",
                             .help = kBuilderHelp,
                             .icon = kIconShapes,
                             .keys = kShapeKeys};
const ModeRow kSlotMode = {
    .mode = kModeSlot, .header = u"SLOT BUILDER", .help = kBuilderHelp, .keys = kSlotKeys};

namespace {

// The key may be pressed where the panel is not up: it comes up with the shape.
void BringShapeUp(int row) {
  const bool up = app.surface == kSurfaceCode && (app.mode == kModeShapes || app.mode == kModeSlot);
  if (!up) Call(hooks.setMode, static_cast<int>(kModeShapes));
  ChooseShape(row);
}

void OnQuickShape(int id, int) { BringShapeUp(id - kIdQuickShapeFirst); }

void OnCustomShapes(int, int) {
  const int index = PickSavedShape(kIdCustomShapes, ChosenShape() - kBuiltInShapes);
  if (index >= 0) BringShapeUp(kBuiltInShapes + index);
}

}  // namespace

constexpr Builder kShapeBuilder{
    .kind = kKindShape,
    .title = kShapeTitle,
    .form = &kForm,
    .mode = kModeShapes,
    .row = &kShapesMode,
    .moreModes = {&kSlotMode, 1},
    .helpBelow = true,
    .wholeNumbers = true,
    .enter = OnEntered,
    .insertKey = kIdShapeInsert,
    .commands = kCommands,
    .refreshMs = kRefreshMs,
    .check = Check,
    .write = Write,
    .draw = Draw,
    .modeOf =
        [](const FormValues& form) {
          return static_cast<int>(form.choices[0] == kShapeSlot ? kModeSlot : kModeShapes);
        },
    .room = [](const FormValues& form) { return ShapeRoom(ValuesOf(form)); },
    .storeItems = StoreItems,
    .inserted = TellInserted,
};

int ChosenShape() { return platform::SelectedRow(kIdShapeCombo); }

void ChooseShape(int row) {
  if (row == ChosenShape() || row < 0 || row >= platform::RowCount(kIdShapeCombo)) return;
  platform::SelectRow(kIdShapeCombo, row);
  FormNotified(kIdShapeCombo, platform::kNotifyComboSelect);
}

void RegisterShapeBuilder() {
  RegisterBuilder<kShapeBuilder>();
  AddShapeList(FillShapes);
  RegisterCommand(RouterStage::Builder, kIdQuickShapeFirst, kIdQuickShapeLast,
                  platform::kNotifyClick, OnQuickShape);
  RegisterCommand(RouterStage::Builder, kIdCustomShapes, platform::kNotifyClick, OnCustomShapes);
}

void ResetShapeBuilder() { filled = Filled(); }

}  // namespace morva
