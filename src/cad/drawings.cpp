#include "cad/drawings.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "cad/draw_parts.h"
#include "cad/select_drag.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "cad/workspace.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "documents/program_changed.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kRecordLimit = 1e9;  // what a settings record can hold stays below
constexpr int kSettingsVersion = 3;
constexpr int kThicknessValue = 15;  // place in a record's values, behind depth, feed and Safe Z

constexpr CutData kInchCut{-0.1, 10.0, 0.5};
constexpr CutData kMmCut{-2.54, 254.0, 12.7};

bool IsSketchRecord(const FeatureSettings& record) {
  return record.kind == kKindSketch && record.itemCount >= 0 && record.itemCount <= kMaxItems &&
         ValidateSettings(record, static_cast<std::size_t>(SettingsLength(record)));
}

void TakeLiveSketch(FeatureSettings& record) {
  record = FeatureSettings();
  record.version = kSettingsVersion;
  record.kind = kKindSketch;
  record.metric = sketch.metric ? 1 : 0;
  record.itemCount = sketch.objectCount;
  const CutData cut = ShownCutData();
  record.values[0] = cut.depth;
  record.values[1] = cut.feed;
  record.values[2] = cut.safeZ;
  record.values[kThicknessValue] = sketch.thickness;
  for (int i = 0; i < sketch.objectCount; ++i) {
    record.items[i] = ItemOf(sketch.objects[i]);
  }
}

double Storable(double value) { return std::fabs(value) < kRecordLimit ? value : 0; }

// A field that holds no number of this world must not keep the drawing from being stored.
bool StoreLiveSketch(FeatureSettings& record) {
  TakeLiveSketch(record);
  for (double& value : record.values) value = Storable(value);
  for (int i = 0; i < record.itemCount; ++i) {
    FeatureItem& item = record.items[i];
    item.p0 = Storable(item.p0);
    item.p1 = Storable(item.p1);
    item.p2 = std::fabs(Storable(item.p2));
    item.p3 = std::fabs(Storable(item.p3));
    item.p4 = Storable(item.p4);
  }
  return IsSketchRecord(record);
}

bool Renaming() { return platform::IsVisible(kIdCadDrawingName); }

// Until the workspace stands the live sketch and its fields are nobody's.
bool WorkspaceStands() { return liveModels.cadWindowExists && liveModels.cadWindowExists(); }

// Whether the live sketch holds geometry that the record does not.
bool HoldsOther(const FeatureSettings& record) {
  if (sketch.objectCount == 0) return false;
  if (sketch.objectCount != record.itemCount || sketch.metric != (record.metric != 0)) return true;
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject stored = ObjectOf(record.items[i]);
    const SketchObject& live = sketch.objects[i];
    if (live.group != stored.group || !SameGeometry(live, stored)) return true;
  }
  return false;
}

// Whatever a tool, a pick or a drag still held belongs to the sketch that goes.
void ResetSelection() {
  StopTools(false);
  ResetSelectDrag();
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
                record ? record->values[kThicknessValue] : 0);
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

// The set of drawings and the working copy of the active program; null: no program, or no
// memory, and nothing changed.
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

void OnTabKey(int id, int) { SelectDrawingTab(id - kIdDrawingFirst); }
void OnAdd(int, int) { AddDrawingTab(); }
void OnRename(int, int) { RenameDrawingTab(); }

// What the user types there belongs to the drawing, as its geometry does.
void OnCutData(int, int) { ProgramChanged({.autosave = true}); }

}  // namespace

CutData ShownCutData() {
  return {FieldNumber(kIdCadDepth, 0), FieldNumber(kIdCadFeed, 0), FieldNumber(kIdCadSafeZ, 0)};
}

void ShowCutData(const CutData& cut, int decimals) {
  platform::SetText(kIdCadDepth, SketchNumber(cut.depth, decimals));
  platform::SetText(kIdCadFeed, SketchNumber(cut.feed, decimals));
  platform::SetText(kIdCadSafeZ, SketchNumber(cut.safeZ, decimals));
}

void CloseDrawingName() {
  if (!Renaming()) return;
  platform::SetVisible(kIdCadDrawingName, false);
  Call(hooks.layout);
}

void RefreshDrawingTabs() {
  const ProgramTab* tab = ActiveTab();
  const CadStore* store = tab ? tab->cadStore : nullptr;
  const int count = store ? static_cast<int>(store->count) : 1;
  for (int i = 0; i < kMaxDrawings; ++i) {
    const int id = kIdDrawingFirst + i;
    const bool active = store ? i == static_cast<int>(store->active) : i == 0;
    if (i < count) platform::SetText(id, store ? store->drawings[i].name : u"Drawing 1");
    platform::SetChecked(id, active);
    platform::SetVisible(id, i < count);
    platform::Repaint(id);
  }
}

void SelectDrawingTab(int index) {
  ProgramTab* tab = ProvideDrawings();
  if (!tab) return;
  CloseDrawingName();
  if (index >= 0) SwitchDrawing(*tab, static_cast<std::uint32_t>(index));
}

void AddDrawingTab() {
  ProgramTab* tab = ProvideDrawings();
  if (!tab) return;
  CloseDrawingName();
  CadStore& store = *tab->cadStore;
  if (store.count >= kMaxDrawings) {
    SetSketchStatus(u"Eight drawings per program. Start another program for more drawings.");
    return;
  }
  ProgramChanged({.autosave = true});
  const std::uint32_t index = store.count++;
  StartDrawing(store.drawings[index], static_cast<int>(store.count));
  SwitchDrawing(*tab, index);
  Call(hooks.layout);  // one key more
}

void RenameDrawingTab() {
  ProgramTab* tab = ProvideDrawings();
  if (!tab) return;
  Drawing& drawing = tab->cadStore->drawings[tab->cadStore->active];
  if (!Renaming()) {
    platform::SetTextLimit(kIdCadDrawingName, kDrawingNameUnits - 1);
    platform::SetText(kIdCadDrawingName, drawing.name);
    platform::SetVisible(kIdCadDrawingName, true);
    platform::BringToTop(kIdCadDrawingName);
    Call(hooks.layout);
    platform::SetFocusTo(kIdCadDrawingName);
    platform::SelectAllText(kIdCadDrawingName);
    return;
  }
  CloseDrawingName();
  ProgramChanged({.autosave = true});
  const std::u16string name = platform::TextOf(kIdCadDrawingName);
  if (!name.empty()) CopyBounded(drawing.name, kDrawingNameUnits, name);
  RefreshDrawingTabs();
  SetSketchStatus(u"Drawing renamed. Save the program to preserve all CAD tabs.");
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

bool WriteSketchSettings(FeatureSettings& record) {
  TakeLiveSketch(record);
  return IsSketchRecord(record);
}

bool OpenSketchBlock(const FeatureSettings& record) {
  if (!IsSketchRecord(record)) return false;
  // First: the workspace stages the program's own drawing when it comes up.
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  if (!WorkspaceStands()) return false;
  DropSketchUndoForBlock(HoldsOther(record));
  ClearFlags();
  LoadObjects(&record);
  SetSelected(-1);
  ShowLoaded();
  if (sketch.undoDepth > 0) LogSketchOperation(u"Opened a block (Undo: former drawing)");
  return true;
}

void RegisterDrawings() {
  liveModels.cadWindowExists = CadWindowExists;
  liveModels.storeSketch = StoreLiveSketch;
  liveModels.loadSketch = LoadModel;
  liveModels.storeSketchFlags = StoreFlags;
  liveModels.loadSketchFlags = LoadFlags;
  liveModels.resetSelection = ResetSelection;
  RegisterCommand(RouterStage::Builder, kIdDrawingFirst, kIdDrawingLast, platform::kNotifyClick,
                  OnTabKey);
  RegisterCommand(RouterStage::Builder, kIdDrawingAdd, platform::kNotifyClick, OnAdd);
  RegisterCommand(RouterStage::Builder, kIdDrawingRename, platform::kNotifyClick, OnRename);
  RegisterCommand(RouterStage::Builder, kIdCadDepth, kIdCadSafeZ, platform::kNotifyEditChange,
                  OnCutData);
}

void ResetDrawings() { platform::SetVisible(kIdCadDrawingName, false); }

}  // namespace morva
