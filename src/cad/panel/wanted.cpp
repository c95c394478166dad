#include "cad/panel/wanted.h"

#include <algorithm>
#include <string_view>

#include "app/app_state.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/select_drag.h"
#include "cad/tools/tool_change.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "library/wanted_drawing.h"
#include "text/codetext.h"

namespace morva {

namespace {

WantedDrawing drawing;     // without `take`: none is wanted
WantedPlace place;         // without `done`: none is wanted
std::int32_t builder = 0;  // the surface to go back to

bool IsNamed(const Drawing& one, std::u16string_view name) { return name == one.name; }

// The drawing of this name, else one that may be made or taken, else -1.
int DrawingFor(const CadStore& store, std::u16string_view name) {
  const auto count = static_cast<int>(store.count);
  for (int i = 0; i < count; ++i) {
    if (IsNamed(store.drawings[i], name)) return i;
  }
  if (count < kMaxDrawings) return count;
  for (int i = 0; i < count; ++i) {
    const bool unnamed = IsNamed(store.drawings[i], u"Drawing " + IntegerText(i + 1));
    const bool live = i == static_cast<int>(store.active);
    const int objects = live ? sketch.objectCount : store.drawings[i].settings.itemCount;
    if (unnamed && objects == 0) return i;
  }
  return -1;
}

void DrawStart(const WantedDrawing& wanted) {
  if (wanted.start.empty()) return;
  static FeatureSettings record;
  StartSketchRecord(record, wanted.metric);
  record.itemCount =
      static_cast<std::int32_t>(std::min<std::size_t>(wanted.start.size(), kMaxItems));
  for (int i = 0; i < record.itemCount; ++i) {
    record.items[i] = ItemOf(wanted.start[static_cast<std::size_t>(i)]);
  }
  TakeSketchItems(record);
}

void BringUp(ProgramTab& tab, int index, const WantedDrawing& wanted) {
  const bool there = index < static_cast<int>(tab.cadStore->count) &&
                     IsNamed(tab.cadStore->drawings[index], wanted.name);
  if (index == static_cast<int>(tab.cadStore->count)) AddDrawing(tab);
  SwitchDrawing(tab, static_cast<std::uint32_t>(index));
  if (there) return;
  NameActiveDrawing(tab, wanted.name);
  DrawStart(wanted);
  ProgramChanged({.autosave = true});
}

// Before any surface comes up, so that a refusal leaves the builder as it is.
bool HasRoom(std::u16string_view name) {
  const ProgramTab* tab = ActiveTab();
  return tab && (!tab->cadStore || DrawingFor(*tab->cadStore, name) >= 0);
}

bool OpenWantedDrawing(const WantedDrawing& wanted) {
  if (!HasRoom(wanted.name)) {
    ShowStatus(wanted.full);
    return false;
  }
  const std::int32_t from = app.surface;
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  ProgramTab* tab = ProvideDrawings();
  const int index = tab ? DrawingFor(*tab->cadStore, wanted.name) : -1;
  if (index < 0) {
    Call(hooks.setSurface, static_cast<int>(from));
    ShowStatus(wanted.full);
    return false;
  }
  CancelTools();
  BringUp(*tab, index, wanted);
  builder = from;
  drawing = wanted;
  drawing.start = {};
  RefreshDrawingTabs();
  Call(hooks.layout);  // a key more, perhaps
  RefreshCadTools();
  SetSketchStatus(wanted.hint);
  return true;
}

bool PickWantedPlace(const WantedPlace& wanted) {
  const std::int32_t from = app.surface;
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  if (app.surface != kSurfaceCad) return false;
  CancelTools();
  builder = from;
  place = wanted;
  RefreshCadTools();
  SetSketchStatus(wanted.hint);
  return true;
}

// Whether the drawing that is up is the wanted one; the user may look at another meanwhile.
bool WantedIsUp() {
  const ProgramTab* tab = ActiveTab();
  if (!drawing.take || !tab || !tab->cadStore) return false;
  return IsNamed(tab->cadStore->drawings[tab->cadStore->active], drawing.name);
}

void HandOver() {
  unsigned char hidden[kMaxItems] = {};
  unsigned char locked[kMaxItems] = {};
  StoreFlags(hidden, locked);
  const auto count = static_cast<std::size_t>(sketch.objectCount);
  const char16_t* words = drawing.take({sketch.objects, count}, hidden, sketch.metric);
  if (words) SetSketchStatus(words);
}

void GoBackToBuilder() {
  const std::int32_t surface = builder;
  ForgetWanted();
  Call(hooks.setSurface, static_cast<int>(surface));
}

// The press is the builder's: nothing is drawn or chosen by it.
bool TakePress(const platform::PointerEvent& event) {
  if (!place.done || AnyToolInHand()) return false;
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  const WantedPlace wanted = place;
  const bool metric = sketch.metric;
  GoBackToBuilder();
  wanted.done(x, y, metric);
  return true;
}

}  // namespace

bool WantedKey(const platform::KeyEvent& key) {
  if (key.ctrl || key.alt || key.shift || AnyToolInHand()) return false;
  if (!WantedIsUp() && !place.done) return false;
  if (key.key == platform::kKeyEscape) {
    // What is selected is given up first, as ever.
    if (HasSketchSelection() || SelectDragging()) return false;
    GoBackToBuilder();
    return true;
  }
  if (key.key != platform::kKeyEnter || !WantedIsUp()) return false;
  HandOver();
  return true;
}

bool WantedBack() {
  if (place.done) {
    GoBackToBuilder();
    return true;
  }
  if (!WantedIsUp()) return false;
  HandOver();
  return true;
}

void ForgetWanted() {
  drawing = WantedDrawing();
  place = WantedPlace();
  builder = kSurfaceCode;
}

void RegisterWanted() {
  hooks.openDrawing = OpenWantedDrawing;
  hooks.pickInDrawing = PickWantedPlace;
  cadHooks.takePress = TakePress;
}

}  // namespace morva
