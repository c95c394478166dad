#include "cad/model/drawings.h"

#include <algorithm>
#include <memory>
#include <new>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/cut_data.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/sketch_words.h"
#include "documents/edit_link.h"
#include "documents/tab_models.h"
#include "forms/form.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

bool followed = false;  // the application's unit when the drawing was last looked at, true: metric

// Before the workspace is made, the live sketch belongs to no program.
bool WorkspaceStands() { return liveModels.cadWindowExists && liveModels.cadWindowExists(); }

// Ends the tool, the pick and the drag of the sketch that is replaced.
void ResetSelection() {
  DropTools();
  SetSelected(-1);
}

// Objects, unit and thickness of a record; the flags stand already.
void LoadItems(const FeatureSettings& record) {
  ResetSelection();
  SetTrimPreview(false);
  platform::ClearRows(kIdCadRecent);
  SketchObject objects[kMaxItems];
  for (int i = 0; i < record.itemCount; ++i) objects[i] = ObjectOf(record.items[i]);
  const bool before = sketch.metric;
  ReplaceSketch(objects, record.itemCount, record.metric != 0, record.values[kSketchThickness]);
  // What stands in the tools' fields is as long as before.
  if (sketch.metric != before) {
    ConvertForms(SketchIsMetric, sketch.metric ? kMmPerInch : kInchPerMm);
  }
}

void ShowLoaded() {
  RefreshDrawingTabs();
  RefreshCadPanel();
  RefreshSketchPanels();
}

void LoadModel(const FeatureSettings* record) {
  static FeatureSettings none;
  StartSketchRecord(none, UnitsMetric());
  const FeatureSettings& loaded = record && IsSketchRecord(*record) ? *record : none;
  DropSketchUndo();
  LoadItems(loaded);
  if (loaded.itemCount > 0) SetSelected(0);
  ShowCutData(CutDataOf(loaded.values));
  // No form: the box lies over the tab whose drawing goes.
  platform::SetVisible(kIdCadDrawingName, false);
  ShowLoaded();
}

void StartDrawing(Drawing& drawing, int number) {
  drawing = Drawing();
  StartSketchRecord(drawing.settings, UnitsMetric());
  CopyBounded(drawing.name, kDrawingNameUnits, u"Drawing " + IntegerText(number));
}

}  // namespace

ProgramTab* ProvideDrawings() {
  ProgramTab* tab = ActiveTab();
  if (!tab || !WorkspaceStands()) return nullptr;
  if (tab->cadStore && tab->cadSettings) return tab;
  std::unique_ptr<FeatureSettings> copy;
  std::unique_ptr<CadStore> store;
  if (!tab->cadSettings) copy.reset(new (std::nothrow) FeatureSettings());
  if (!tab->cadStore) store.reset(new (std::nothrow) CadStore());
  if ((!tab->cadSettings && !copy) || (!tab->cadStore && !store)) return nullptr;
  if (copy) tab->cadSettings = copy.release();
  if (!store) return tab;
  tab->cadStore = store.release();
  tab->cadStore->count = 1;
  CopyBounded(tab->cadStore->drawings[0].name, kDrawingNameUnits, u"Drawing 1");
  SaveLiveDrawing();
  return tab;
}

std::uint32_t AddDrawing(ProgramTab& tab) {
  CadStore& store = *tab.cadStore;
  const std::uint32_t index = store.count++;
  StartDrawing(store.drawings[index], static_cast<int>(store.count));
  return index;
}

void NameActiveDrawing(ProgramTab& tab, std::u16string_view name) {
  CopyBounded(tab.cadStore->drawings[tab.cadStore->active].name, kDrawingNameUnits, name);
}

void SetDrawingBlock(ProgramTab& tab, std::int32_t id, std::uint32_t hash) {
  Drawing& drawing = tab.cadStore->drawings[tab.cadStore->active];
  drawing.block = id;
  drawing.blockHash = hash;
}

void SwitchDrawing(ProgramTab& tab, std::uint32_t index) {
  CadStore& store = *tab.cadStore;
  if (index >= store.count || index == store.active) return;
  // The plate is loaded again below; its live changes are kept first.
  StashActiveWorkspace();
  SaveLiveDrawing();
  store.active = index;
  const Drawing& target = store.drawings[index];
  *tab.cadSettings = target.settings;
  std::copy_n(target.hidden, kMaxItems, tab.sketchHidden);
  std::copy_n(target.locked, kMaxItems, tab.sketchLocked);
  DropEditLink();
  LoadSketchForProgram();
  const bool plate = liveModels.plateWindowExists && liveModels.plateWindowExists();
  if (plate && liveModels.loadPlate) liveModels.loadPlate(tab.plateSettings);
  platform::SetText(kIdCadDrawingName, target.name);
}

void SaveLiveDrawing() {
  static FeatureSettings live;  // so that no memory is asked for, and none can be missing
  ProgramTab* tab = ProvideDrawings();
  if (!tab || !StoreLiveSketch(live)) return;
  Drawing& drawing = tab->cadStore->drawings[tab->cadStore->active];
  drawing.settings = live;
  StoreFlags(drawing.hidden, drawing.locked);
  *tab->cadSettings = live;
  StoreFlags(tab->sketchHidden, tab->sketchLocked);
}

void LoadSketchForProgram() {
  const ProgramTab* tab = ActiveTab();
  if (tab) LoadFlags(tab->sketchHidden, tab->sketchLocked);
  LoadModel(tab ? tab->cadSettings : nullptr);
}

void FollowUnit() {
  if (followed == UnitsMetric()) return;
  followed = UnitsMetric();
  const bool fresh = sketch.objectCount == 0 && sketch.undoDepth == 0;
  if (fresh && sketch.metric != followed) LoadModel(nullptr);
}

void TakeSketchItems(const FeatureSettings& record) {
  ClearFlags();
  LoadItems(record);
  ShowLoaded();
}

void RegisterDrawings() {
  cadHooks.sketchBegun = [] {
    ProgramTab* tab = ActiveTab();
    if (tab && tab->cadStore) SetDrawingBlock(*tab, 0, 0);
  };
  followed = UnitsMetric();
  cadHooks.showCutData = [](const CutData& cut) { ShowCutData(cut); };
  liveModels.storeSketch = StoreLiveSketch;
  liveModels.loadSketch = LoadModel;
  liveModels.storeSketchFlags = StoreFlags;
  liveModels.loadSketchFlags = LoadFlags;
  liveModels.resetSelection = ResetSelection;
}

}  // namespace morva
