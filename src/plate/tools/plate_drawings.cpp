#include "plate/tools/plate_drawings.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>

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

// A plate that no record holds waits here while another program is up.
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

// The live plate, in a row of its program's own or of one that was closed.
void LetWait() {
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
  row->record = tab->plateSettings ? *tab->plateSettings : FeatureSettings();
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

// A record tells that the plate has a name, and not which. The set of this run knows it; behind a
// restart the library does, unless that shape is another plate's already.
void FindName() {
  const ProgramTab* tab = ActiveTab();
  if (plate.unnamed) return;
  const PlateStore* store = tab ? tab->plateStore : nullptr;
  const std::u16string kept = store ? store->names[store->active] : u"";
  if (!kept.empty()) {
    TakePlateName(kept, false, FindShape(kept));
    return;
  }
  const int index = FindPlateShape();
  if (index < 0 || IsNameOfOtherDrawing(shapeLibrary.shapes[index].name)) return;
  TakePlateName(shapeLibrary.shapes[index].name, false, index);
}

}  // namespace

bool StoreLivePlate(FeatureSettings& record) {
  if (SavePlateSettings(record)) {
    if (Waiting* row = WaitingOf(ActiveSerial()); row && row->plate) DropWaiting(*row);
    NoteLeftOut(false);
    if (PlateItems(plate) <= kMaxItems) KeepAllLabels();
    return true;
  }
  LetWait();
  NoteLeftOut(true);
  TellFull();
  return false;
}

void LoadLivePlate(const FeatureSettings* record) {
  if (TakeWaiting(record)) return;
  NoteLeftOut(false);
  if (!record || !LoadPlateSettings(*record)) StartPlate(UnitsMetric());
  FindName();
  SettlePlate(plate.savedShapeIndex >= 0);
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
  return static_cast<int>(index);
}

bool SaveLivePlate() {
  static FeatureSettings live;
  ProgramTab* tab = ProvidePlates();
  if (!tab || !StoreLivePlate(live)) return false;
  PlateStore& store = *tab->plateStore;
  store.plates[store.active] = live;
  CopyBounded(store.names[store.active], kShapeNameUnits, plate.name);
  *tab->plateSettings = live;
  return true;
}

void ForgetPlateName() {
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->plateStore) return;
  PlateStore& store = *tab->plateStore;
  store.names[store.active][0] = 0;
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
