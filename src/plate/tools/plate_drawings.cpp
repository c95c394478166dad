#include "plate/tools/plate_drawings.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>

#include "app/app_state.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "documents/edit_link.h"
#include "documents/save_state.h"
#include "documents/tab_models.h"
#include "library/shapes.h"
#include "library/units.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_saving.h"
#include "text/codetext.h"

namespace morva {

namespace {

// The change of the plate at which the user was told: a store is tried again behind every pause.
std::uint32_t toldAt = 0;

// Most of what is too much may belong to features that nobody sees.
void TellFull() {
  const int unused = PlateItemsOutOfUse(plate, FeatureCount(NumbersOf(plate)));
  if (unused > 0 && toldAt != plate.changes) {
    AppendOutput(IntegerText(unused) +
                 u" stored settings belong to feature numbers that the layout has no more.");
  }
  toldAt = plate.changes;
  SayOnPlate(kPlateFull);  // last: the status line of the workspace repeats the log
}

// A plate that no record holds as it is waits here while another program is up.
struct Waiting {
  std::uint64_t serial = 0;     // of the program, 0: none waits
  std::uint32_t drawing = 0;    // its active plate
  FeatureSettings record = {};  // what the program has of it
  std::unique_ptr<PlateRecord> plate;
};
Waiting waiting[kMaxTabs];

std::uint32_t ActiveDrawing(const ProgramTab& tab) {
  return tab.plateStore ? tab.plateStore->active : 0;
}

Waiting* WaitingOf(std::uint64_t serial) {
  for (Waiting& row : waiting) {
    if (row.serial == serial) return &row;
  }
  return nullptr;
}

void DropWaiting(Waiting& row) {
  row.serial = 0;
  row.plate.reset();
}

// The live plate, in a row of its program's own or of one that was closed. `record` is what the
// program has of it.
void LetWait(const FeatureSettings* record) {
  const ProgramTab* tab = ActiveTab();
  if (!tab) return;
  Waiting* row = WaitingOf(tab->serial);
  for (Waiting& each : waiting) {
    if (!row && !TabOfSerial(each.serial)) row = &each;
  }
  if (!row) return;
  row->plate.reset(new (std::nothrow) PlateRecord(plate));
  if (!row->plate) return;
  row->serial = tab->serial;
  row->drawing = ActiveDrawing(*tab);
  row->record = record ? *record : FeatureSettings();
}

bool SameRecord(const FeatureSettings& a, const FeatureSettings* b) {
  unsigned char one[kSettingsBytes];
  unsigned char other[kSettingsBytes];
  WriteSettings(a, one);
  WriteSettings(b ? *b : FeatureSettings(), other);
  return std::equal(one, one + kSettingsBytes, other);
}

// No file can hold the live plate, or one can: what closing its program asks depends on it.
void NoteLeftOut(bool leftOut) {
  if (ProgramTab* tab = ActiveTab()) NotePlateLeftOut(*tab, leftOut);
}

// What waits for the active program, unless its record was changed meanwhile.
bool TakeWaiting(const FeatureSettings* record) {
  const ProgramTab* tab = ActiveTab();
  Waiting* row = tab ? WaitingOf(tab->serial) : nullptr;
  if (!row || !row->plate || record != tab->plateSettings) return false;
  const bool same = row->drawing == ActiveDrawing(*tab) && SameRecord(row->record, record);
  if (same) TakePlate(*row->plate);
  DropWaiting(*row);
  return same;
}

std::u16string KeptName(const char16_t (PlateStore::*names)[kMaxPlates][kShapeNameUnits]) {
  const ProgramTab* tab = ActiveTab();
  const PlateStore* store = tab ? tab->plateStore : nullptr;
  return store ? (store->*names)[store->active] : u"";
}

// A renamed plate keeps its place in the library until it is saved under the new name.
void TakeKeptName(const std::u16string& kept) {
  const std::u16string saved = KeptName(&PlateStore::savedNames);
  TakePlateName(kept, false, FindShape(saved.empty() ? kept : saved));
  if (plate.savedShapeIndex >= 0 && !saved.empty())
    SetPlateShapeIndex(plate.savedShapeIndex, saved);
}

// Another drawing of an open program is this very plate, has a name, and nobody knows which.
bool HasTwinWithoutName(const FeatureSettings& live) {
  for (int tab = 0; tab < app.tabCount; ++tab) {
    const PlateStore* store = tabs[tab].plateStore;
    const bool shown = tab == app.activeTab;
    for (std::uint32_t i = 0; store && i < store->count; ++i) {
      if (shown && i == store->active) continue;
      const bool named = store->plates[i].values[kPlateUnnamed] == 0;
      if (!named || store->names[i][0] != 0) continue;
      FeatureSettings other = store->plates[i];
      other.codeHash = live.codeHash;  // whichever of them was sent
      if (SameRecord(other, &live)) return true;
    }
  }
  return false;
}

// The one shape that may be the live plate and no other's; -1: none, or one of them would be a
// guess. Plates that are alike need not have been named in the order of their tabs, and the shape
// of one of them may be gone.
int ShapeOfLivePlate(const FeatureSettings& record) {
  int found[kMaxShapes];
  const int count = FindPlateShapes(found);
  if (count != 1 || IsNameOfOtherDrawing(shapeLibrary.shapes[found[0]].name)) return -1;
  return HasTwinWithoutName(record) ? -1 : found[0];
}

// A record tells that the plate has a name, and not which. The set of this run knows it; behind a
// restart the library does.
void FindName(const FeatureSettings* record) {
  if (plate.unnamed) return;
  const std::u16string kept = KeptName(&PlateStore::names);
  if (!kept.empty()) return TakeKeptName(kept);
  const int index = record ? ShapeOfLivePlate(*record) : -1;
  if (index >= 0) TakePlateName(shapeLibrary.shapes[index].name, false, index);
}

}  // namespace

bool StoreLivePlate(FeatureSettings& record) {
  if (SavePlateSettings(record)) {
    if (Waiting* row = WaitingOf(ActiveSerial()); row && row->plate) DropWaiting(*row);
    if (int refused = -1; !PlateTextsRead(plate, refused)) LetWait(&record);
    NoteLeftOut(false);
    if (PlateItems(plate) <= kMaxItems) KeepAllLabels();
    return true;
  }
  const ProgramTab* tab = ActiveTab();
  LetWait(tab ? tab->plateSettings : nullptr);
  NoteLeftOut(true);
  TellFull();
  return false;
}

void LoadLivePlate(const FeatureSettings* record) {
  if (TakeWaiting(record)) return SayBehindLoad();
  NoteLeftOut(false);
  if (!record || !LoadPlateSettings(*record)) StartPlate(UnitsMetric());
  FindName(record);
  SettlePlate(plate.savedShapeIndex >= 0);
  SayBehindLoad();
}

void ResetPlateDrawings() {
  for (Waiting& row : waiting) DropWaiting(row);
}

ProgramTab* ProvidePlates() {
  ProgramTab* tab = ActiveTab();
  if (!tab) return nullptr;
  if (tab->plateStore && tab->plateSettings) return tab;
  StashActiveWorkspace();
  return tab->plateStore && tab->plateSettings ? tab : nullptr;
}

int AddPlateDrawing(ProgramTab& tab) {
  PlateStore& store = *tab.plateStore;
  if (store.count >= kMaxPlates) return -1;
  const std::uint32_t index = store.count++;
  StartPlateRecord(store.plates[index], UnitsMetric());
  store.names[index][0] = 0;
  store.savedNames[index][0] = 0;
  return static_cast<int>(index);
}

bool SaveLivePlate() {
  static FeatureSettings live;
  ProgramTab* tab = ProvidePlates();
  if (!tab || !StoreLivePlate(live)) return false;
  PlateStore& store = *tab->plateStore;
  store.plates[store.active] = live;
  CopyBounded(store.names[store.active], kShapeNameUnits, plate.name);
  CopyBounded(store.savedNames[store.active], kShapeNameUnits, plate.savedName);
  *tab->plateSettings = live;
  return true;
}

std::u16string HalfNumberKept(const ProgramTab& tab) {
  const Waiting* row = WaitingOf(tab.serial);
  const bool live = &tab == ActiveTab();
  const PlateRecord* record = live ? &plate : row ? row->plate.get() : nullptr;
  const std::u16string half = record ? HalfNumberOf(*record) : std::u16string();
  if (half.empty()) return {};
  // Who is asked about another program has it out of sight.
  const std::u16string program = live ? u"" : NameOfTab(IndexOfSerial(tab.serial)) + u": ";
  return program + PlateInWords(record->name) + half;
}

void ForgetPlateName() {
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->plateStore) return;
  PlateStore& store = *tab->plateStore;
  store.names[store.active][0] = 0;
  store.savedNames[store.active][0] = 0;
}

bool SwitchPlateDrawing(ProgramTab& tab, std::uint32_t index) {
  PlateStore& store = *tab.plateStore;
  if (index >= store.count || index == store.active) return false;
  SavePendingShape();
  if (!SaveLivePlate()) return false;
  store.active = index;
  *tab.plateSettings = store.plates[index];
  DropEditLink();
  LoadLivePlate(tab.plateSettings);
  return true;
}

}  // namespace morva
