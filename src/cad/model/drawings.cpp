#include "cad/model/drawings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/cut_data.h"
#include "cad/model/former_drawing.h"
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
#include "text/length_units.h"

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

// The workspace's lengths are numbers, or empty.
bool LengthsAreWhole() {
  return std::ranges::none_of(kCadForm.rows, [](const FormRow& row) {
    double value = 0;
    return row.kind == RowKind::Number && row.follows == Follows::Length &&
           platform::Exists(row.id) && !platform::TextOf(row.id).empty() &&
           !ReadStrictField(row.id, value);
  });
}

// A drawing that nobody gave anything of its own.
bool IsUntouched() {
  const CutData shown = ShownCutData();
  const CutData start = StartCutData(sketch.metric);
  return shown.depth == start.depth && shown.feed == start.feed && shown.safeZ == start.safeZ &&
         sketch.thickness == 0;
}

// The cutting fields with 6 decimals, so that a unit that goes to and fro loses nothing. What is
// empty stays so.
using CutTexts = std::array<std::u16string, 3>;

void KeepCutTexts(CutTexts& texts) {
  for (const FormRow& row : kCadForm.rows) {
    if (IsCutField(row)) texts[static_cast<std::size_t>(row.value)] = platform::TextOf(row.id);
  }
}

void ShowConverted(const CutTexts& texts, double factor) {
  for (const FormRow& row : kCadForm.rows) {
    if (!IsCutField(row)) continue;
    const std::u16string& text = texts[static_cast<std::size_t>(row.value)];
    if (text.empty()) continue;
    platform::SetText(row.id, SketchNumber(ParseDecimal(text, 0) * factor, 6));
  }
}

// What a snapshot of the sketch leaves out.
void BringFormerBack(const FormerDrawing& former) {
  ShowCutData(former.cut);
  ProgramTab* tab = ActiveTab();
  if (!tab || !tab->cadStore) return;
  NameActiveDrawing(*tab, former.name);
  SetDrawingBlock(*tab, former.block);
  RefreshDrawingTabs();
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

void SetDrawingBlock(ProgramTab& tab, const KnownBlock& block) {
  Drawing& drawing = tab.cadStore->drawings[tab.cadStore->active];
  drawing.block = block;
  drawing.readGeometry = 0;
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
  // A skim that is edited has its line drawn here: its block stays the one under edit.
  if (editLink.kind != kKindSkim) DropEditLink();
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
  const bool metric = UnitsMetric();
  const bool fresh = sketch.objectCount == 0 && sketch.undoDepth == 0;
  const bool follows = fresh && sketch.metric != metric;
  // What is half typed would be converted to 0. It is looked at again after the next event.
  if (follows && !LengthsAreWhole()) return;
  followed = metric;
  if (!follows) return;
  if (IsUntouched()) {
    LoadModel(nullptr);
    return;
  }
  CutTexts cut;
  KeepCutTexts(cut);
  SwitchSketchUnits(metric);
  ShowConverted(cut, metric ? kMmPerInch : kInchPerMm);
}

void TakeSketchItems(const FeatureSettings& record) {
  ClearFlags();
  LoadItems(record);
  ShowLoaded();
}

void RegisterDrawings() {
  cadHooks.sketchBegun = [] {
    ProgramTab* tab = ActiveTab();
    if (tab && tab->cadStore) SetDrawingBlock(*tab, {});
  };
  followed = UnitsMetric();
  cadHooks.formerDrawingBack = BringFormerBack;
  liveModels.storeSketch = StoreLiveSketch;
  liveModels.loadSketch = LoadModel;
  liveModels.storeSketchFlags = StoreFlags;
  liveModels.loadSketchFlags = LoadFlags;
  liveModels.resetSelection = ResetSelection;
}

}  // namespace morva
