#include "plate/panel/plate_insert.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/builder.h"
#include "documents/companions.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/known_block.h"
#include "documents/tab_table.h"
#include "forms/form_words.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_code.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "plate/panel/plate_live.h"
#include "plate/panel/plate_tabs.h"
#include "plate/tools/plate_drawings.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_fields.h"
#include "plate/tools/plate_forms.h"
#include "plate/tools/plate_saving.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

// The block that a plate was opened from or sent as, while MORVA runs.
struct SentPlate {
  std::uint64_t serial = 0;   // of the program, 0 for a free row
  std::uint32_t drawing = 0;  // which of its plates
  KnownBlock block = {};
};
SentPlate sent[kMaxTabs * kMaxPlates];

// A plate without a name is neither inserted nor asked about.
bool SayUnnamed(const FormValues& /*values*/) {
  if (!plate.unnamed) return false;
  SayOnPlate(kStartNamedPlate);
  return true;
}

bool Check(const FormValues& values, Refusal& refusal) {
  int value = -1;
  if (CheckPlate(plate, refusal, value)) {
    FinishPlateTexts();
    return true;
  }
  if (value < 0 || value >= kPlateFormValues) return false;
  refusal.field = FieldOfPlateValue(value);
  if (refusal.words[0]) return false;
  static std::u16string words;
  const int row = RowOfControl(kPlateForm, refusal.field);
  words = NoNumberWords(kPlateForm.rows[static_cast<std::size_t>(row)], values.metric);
  refusal.words = words.c_str();
  return false;
}

void Write(const FormValues& /*values*/, CodeWriter& out) { WritePlate(plate, out); }

std::size_t Room(const FormValues& /*values*/) { return PlateCodeRoom(plate); }

// What the program's records hold of one plate, whatever code they stand for.
bool SamePlate(const FeatureSettings& a, const FeatureSettings& b) {
  if (a.kind != b.kind || a.metric != b.metric || a.a != b.a || a.b != b.b || a.c != b.c ||
      a.itemCount != b.itemCount || !std::equal(a.values, a.values + kSettingsValues, b.values)) {
    return false;
  }
  return std::equal(a.items, a.items + a.itemCount, b.items,
                    [](const FeatureItem& one, const FeatureItem& other) {
                      return one.type == other.type && one.tag == other.tag && one.p0 == other.p0 &&
                             one.p1 == other.p1 && one.p2 == other.p2 && one.p3 == other.p3 &&
                             one.p4 == other.p4;
                    });
}

void ScanProgram() { ScanEditorText(); }

int RowHolding(const FeatureSettings& record) {
  return FirstRowOf(kKindPlate,
                    [&](const FeatureRecord& row) { return SamePlate(record, row.settings); });
}

std::uint32_t ActiveDrawing() {
  const ProgramTab* tab = ActiveTab();
  return tab && tab->plateStore ? tab->plateStore->active : 0;
}

SentPlate* SentRow(std::uint64_t serial, std::uint32_t drawing) {
  for (SentPlate& row : sent) {
    if (row.serial == serial && row.drawing == drawing) return &row;
  }
  return nullptr;
}

int RowRemembered() {
  const SentPlate* known = SentRow(ActiveSerial(), ActiveDrawing());
  return known ? RowOfBlock(known->block, kKindPlate) : -1;
}

// Rows of programs that are closed are free.
SentPlate& RowToFill(std::uint64_t serial, std::uint32_t drawing) {
  if (SentPlate* known = SentRow(serial, drawing)) return *known;
  SentPlate* unused = std::ranges::find_if(
      sent, [](const SentPlate& row) { return row.serial == 0 || !TabOfSerial(row.serial); });
  return unused == std::end(sent) ? sent[0] : *unused;
}

void RememberBlock(std::int32_t id) {
  ScanProgram();
  const int row = id != 0 ? FindFeature(id) : -1;
  if (row < 0 || features.rows[row].settings.kind != kKindPlate) return;
  SentPlate& sentRow = RowToFill(ActiveSerial(), ActiveDrawing());
  if (sentRow.serial != ActiveSerial() || sentRow.drawing != ActiveDrawing())
    sentRow = {ActiveSerial(), ActiveDrawing(), {}};
  NoteBlock(sentRow.block, id, features.rows[row].settings.codeHash);
}

std::int32_t BlockOfLivePlate() {
  static FeatureSettings live;
  if (!SavePlateSettings(live)) return 0;
  ScanProgram();
  const int holding = RowHolding(live);
  const int row = holding >= 0 ? holding : RowRemembered();
  return row >= 0 ? features.rows[row].id : 0;
}

bool StoreItems(FeatureSettings& record) {
  if (SavePlateSettings(record)) return true;
  SayOnPlate(kPlateFull);
  return false;
}

// Nobody has given it anything of its own.
bool IsUntouched(const FeatureSettings& record) {
  static FeatureSettings start;
  StartPlateRecord(start, record.metric != 0);
  return SamePlate(record, start);
}

// Nothing is lost where another plate takes its place.
bool MayGiveWay(const FeatureSettings& record) {
  return IsUntouched(record) || RowHolding(record) >= 0;
}

// The block that is opened was sent from another drawing and not from this one.
bool IsOfOtherDrawing(const FeatureSettings& record, std::uint32_t drawing) {
  bool others = false;
  for (const SentPlate& row : sent) {
    const bool same = row.serial != 0 && row.serial == ActiveSerial() &&
                      row.block.id == editLink.id && WasCodeOf(row.block, record.codeHash);
    if (same && row.drawing == drawing) return false;
    others = others || same;
  }
  return others;
}

// A plate that looks like that of the block, whose block it is not.
bool OnlyLooksAlike(const FeatureSettings& plate, const FeatureSettings& record,
                    std::uint32_t drawing) {
  return SamePlate(plate, record) && IsOfOtherDrawing(record, drawing);
}

// A drawing that may take the block, -1 for none.
int FreeDrawing(ProgramTab& tab, const FeatureSettings& record) {
  const PlateStore& store = *tab.plateStore;
  for (std::uint32_t i = 0; i < store.count; ++i) {
    if (i != store.active && IsUntouched(store.plates[i])) return static_cast<int>(i);
  }
  const int added = AddPlateDrawing(tab);
  if (added >= 0) return added;
  for (std::uint32_t i = 0; i < store.count; ++i) {
    const FeatureSettings& plate = store.plates[i];
    if (i != store.active && MayGiveWay(plate) && !OnlyLooksAlike(plate, record, i))
      return static_cast<int>(i);
  }
  return -1;
}

bool MayReplace() {
  return platform::ShowBox(
             u"Open a block",
             u"No plate tab is free. The block would take the place of the plate that is shown, "
             u"which stands in no block of the program. Replace it?",
             platform::BoxButtons::NoYes, platform::BoxIcon::Warning) == platform::BoxAnswer::Yes;
}

// The link is made already; it stays over a change of drawing.
void BringUp(ProgramTab& tab, int drawing) {
  const EditLink link = editLink;
  SwitchPlateDrawing(tab, static_cast<std::uint32_t>(drawing));
  SetEditLink(link);
}

// Another drawing that holds the plate of the block already, -1 for none. Whose block it is goes
// before looks: every new plate starts with the same numbers.
int DrawingHolding(const ProgramTab& tab, const FeatureSettings& record) {
  const PlateStore& store = *tab.plateStore;
  for (std::uint32_t i = 0; i < store.count; ++i) {
    if (i != store.active && SamePlate(store.plates[i], record) && !IsOfOtherDrawing(record, i))
      return static_cast<int>(i);
  }
  return -1;
}

// The drawing of the plate itself comes up. A live plate that stands in no block stays in its
// drawing, and a free one comes up. False: there is none, and the user wants to keep the plate.
bool MakeRoom(const FeatureSettings& record) {
  static FeatureSettings live;
  ProgramTab* tab = ProvidePlates();
  if (!tab) return true;
  const bool stored = SavePlateSettings(live);
  const bool alike = OnlyLooksAlike(live, record, ActiveDrawing());
  if (stored && SamePlate(live, record) && !alike) return true;
  ScanProgram();
  if (const int own = DrawingHolding(*tab, record); stored && own >= 0) {
    BringUp(*tab, own);
    return true;
  }
  if (stored && !alike && MayGiveWay(live)) return true;
  const int free = stored ? FreeDrawing(*tab, record) : -1;
  if (free < 0) return MayReplace();
  BringUp(*tab, free);
  return true;
}

bool IsLivePlate(const FeatureSettings& record) {
  static FeatureSettings live;
  return SavePlateSettings(live) && SamePlate(live, record);
}

bool OpenPlateBlock(const FeatureSettings& record) {
  if (!IsPlateRecord(record)) return false;
  // First: the workspace stages the program's own plate when it comes up.
  Call(hooks.setSurface, static_cast<int>(kSurfacePlate));
  if (!platform::Exists(kViewPlate) || !MayPlateGo() || !MakeRoom(record)) return false;
  SavePendingShape();
  // With the name of the plate that gives way it would be saved over that plate's shape.
  if (!IsLivePlate(record)) ForgetPlateName();
  LoadLivePlate(&record);
  SaveLivePlate();
  ClosePlateEditor();
  ResetPlateView();
  RefreshPlateTabs();
  Call(hooks.layout);
  RememberBlock(editLink.id);
  if (PlateLacksName()) {
    OpenPlateNaming(false);
  } else {
    platform::SetFocusTo(kViewPlatePicture);
  }
  return true;
}

// The log and the feature hint are out of sight here.
void TellResult(const FormValues& /*values*/, bool updated) {
  const ProgramTab* tab = ActiveTab();
  std::u16string words = updated ? u"Plate updated in " : u"Plate added to ";
  words += tab ? std::u16string_view(tab->title) : std::u16string_view(u"the program");
  words += u". After a change press INSERT PLATE again: it offers to update this feature.";
  RememberBlock(SelectedFeatureId());
  SayOnPlate(words);
}

constexpr Builder kPlateBuilder{
    .kind = kKindPlate,
    .title = kPlateBoxTitle,
    .form = &kPlateForm,
    .insertKey = kIdPlateInsert,
    .asksWhere = true,
    .logged = kPlateInserted,
    .instead = SayUnnamed,
    .check = Check,
    .write = Write,
    .room = Room,
    .storeItems = StoreItems,
    .loadItems = OpenPlateBlock,
    .standsIn = BlockOfLivePlate,
    .inserted = TellResult,
};

}  // namespace

void RegisterPlateInsert() { RegisterBuilder<kPlateBuilder>(); }

void ResetPlateInsert() { std::ranges::fill(sent, SentPlate()); }

}  // namespace morva
