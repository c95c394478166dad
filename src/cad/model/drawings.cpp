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
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr CutData kInchCut{-0.1, 10.0, 0.5};
constexpr CutData kMmCut{-2.54, 254.0, 12.7};

// Before the workspace is made, the live sketch belongs to no program.
bool WorkspaceStands() { return liveModels.cadWindowExists && liveModels.cadWindowExists(); }

// Ends the tool, the pick and the drag of the sketch that is replaced.
void ResetSelection() {
  DropTools();
  SetSelected(-1);
}

// The objects of a record, or none; the flags stand already.
void LoadObjects(const FeatureSettings* record) {
  ResetSelection();
  SetTrimPreview(false);
  platform::ClearRows(kIdCadRecent);
  SketchObject objects[kMaxItems];
  const int count = record ? record->itemCount : 0;
  for (int i = 0; i < count; ++i) objects[i] = ObjectOf(record->items[i]);
  ReplaceSketch(objects, count, record && record->metric != 0,
                record ? record->values[kSketchThickness] : 0);
  if (count > 0) SetSelected(0);
  ShowCutData(record ? CutData{record->values[0], record->values[1], record->values[2]} : kInchCut);
}

void ShowLoaded() {
  RefreshDrawingTabs();
  RefreshCadPanel();
  RefreshSketchPanels();
}

void LoadModel(const FeatureSettings* record) {
  DropSketchUndo();
  LoadObjects(record && IsSketchRecord(*record) ? record : nullptr);
  platform::SetVisible(kIdCadDrawingName, false);
  ShowLoaded();
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

void StartDrawing(Drawing& drawing, int number) {
  drawing = Drawing();
  const bool metric = UnitsMetric();
  const CutData& cut = metric ? kMmCut : kInchCut;
  drawing.settings.version = kSettingsVersion;
  drawing.settings.kind = kKindSketch;
  drawing.settings.metric = metric ? 1 : 0;
  drawing.settings.values[0] = cut.depth;
  drawing.settings.values[1] = cut.feed;
  drawing.settings.values[2] = cut.safeZ;
  CopyBounded(drawing.name, kDrawingNameUnits, u"Drawing " + IntegerText(number));
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

bool OpenSketchBlock(const FeatureSettings& record) {
  if (!IsSketchRecord(record)) return false;
  // First: the workspace stages the program's own drawing when it comes up.
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  if (!WorkspaceStands()) return false;
  DropSketchUndoForBlock(SketchDiffersFrom(record));
  ClearFlags();
  LoadObjects(&record);
  SetSelected(-1);
  ShowLoaded();
  if (sketch.undoDepth > 0) LogSketchOperation(u"Opened a block (Undo: former drawing)");
  return true;
}

void RegisterDrawings() {
  liveModels.storeSketch = StoreLiveSketch;
  liveModels.loadSketch = LoadModel;
  liveModels.storeSketchFlags = StoreFlags;
  liveModels.loadSketchFlags = LoadFlags;
  liveModels.resetSelection = ResetSelection;
}

}  // namespace morva
