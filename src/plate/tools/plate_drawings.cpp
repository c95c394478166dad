#include "plate/tools/plate_drawings.h"

#include <memory>
#include <new>
#include <string>

#include "app/limits.h"
#include "app/outlets.h"
#include "documents/edit_link.h"
#include "documents/tab_models.h"
#include "library/shapes.h"
#include "library/units.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_saving.h"
#include "text/codetext.h"

namespace morva {

namespace {

// Most of what is too much may belong to features that nobody sees.
void TellFull() {
  SayOnPlate(kPlateFull);
  const int unused = PlateItemsOutOfUse(plate, FeatureCount(NumbersOf(plate)));
  if (unused == 0) return;
  AppendOutput(IntegerText(unused) +
               u" stored settings belong to feature numbers that the layout has no more.");
}

// A record tells that the plate has a name, and not which. The set of this run knows it; behind a
// restart the library does.
void FindName() {
  const ProgramTab* tab = ActiveTab();
  if (plate.unnamed) return;
  const PlateStore* store = tab ? tab->plateStore : nullptr;
  const std::u16string kept = store ? store->names[store->active] : u"";
  if (!kept.empty()) {
    TakePlateName(kept, false, FindShape(kept));
    return;
  }
  const int index = FindPlateShape(plate);
  if (index >= 0) TakePlateName(shapeLibrary.shapes[index].name, false, index);
}

}  // namespace

bool StoreLivePlate(FeatureSettings& record) {
  if (SavePlateSettings(record)) return true;
  TellFull();
  return false;
}

void LoadLivePlate(const FeatureSettings* record) {
  if (!record || !LoadPlateSettings(*record)) StartPlate(UnitsMetric());
  FindName();
  SettlePlate(plate.savedShapeIndex >= 0);
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

bool SwitchPlateDrawing(ProgramTab& tab, std::uint32_t index) {
  PlateStore& store = *tab.plateStore;
  if (index >= store.count || index == store.active || !SaveLivePlate()) return false;
  store.active = index;
  *tab.plateSettings = store.plates[index];
  DropEditLink();
  LoadLivePlate(tab.plateSettings);
  return true;
}

}  // namespace morva
