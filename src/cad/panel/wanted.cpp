#include "cad/panel/wanted.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawing_blocks.h"
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
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

WantedDrawing drawing;     // without `take`: none is wanted
WantedPlace place;         // without `done`: none is wanted
std::int32_t builder = 0;  // the surface to go back to

// The drawing that came up last, which the builder may want again. No drawing is ever removed, and
// the user may rename it, so that its place in the store tells which it is.
struct Shown {
  std::uint64_t program = 0;  // serial
  int index = -1;
  std::int32_t block = 0;  // the block that it stood for when it was up
};
Shown shown;

// A drawing of the store; index = count: one that is to be added, -1: there is none.
struct Target {
  int index = -1;
  std::u16string name = {};
  bool stands = false;  // it has its name and what it begins with
  bool taken = false;   // what it holds gives way
  bool asked = false;   // once the user lets it
};

int IndexOf(const CadStore& store, std::u16string_view name) {
  for (std::uint32_t i = 0; i < store.count; ++i) {
    if (name == store.drawings[i].name) return static_cast<int>(i);
  }
  return -1;
}

std::u16string NameOf(const WantedDrawing& wanted, int number) {
  return number == 1 ? wanted.name : wanted.name + (u" " + IntegerText(number));
}

bool IsOfABlock(const Drawing& one) { return one.block.id != 0 || one.block.codeHash != 0; }

bool AskBuilder(bool (*question)(std::span<const SketchObject>, const unsigned char*, bool),
                const Drawing& one) {
  SketchObject objects[kMaxItems];
  const auto count = static_cast<std::size_t>(one.settings.itemCount);
  for (std::size_t i = 0; i < count; ++i) objects[i] = ObjectOf(one.settings.items[i]);
  return question({objects, count}, one.hidden, one.settings.metric != 0);
}

bool IsIt(const WantedDrawing& wanted, const Drawing& one) {
  return !wanted.isIt || one.settings.itemCount == 0 || AskBuilder(wanted.isIt, one);
}

// What is hidden goes into no block.
bool IsKept(const WantedDrawing& wanted, const Drawing& one) {
  if (!wanted.isKept || !AskBuilder(wanted.isKept, one)) return false;
  return std::ranges::none_of(one.hidden, [](unsigned char flag) { return flag != 0; });
}

// One that may be made, else one that nobody named or drew in, else -1.
int FreeDrawing(const CadStore& store) {
  const auto count = static_cast<int>(store.count);
  if (count < kMaxDrawings) return count;
  for (int i = 0; i < count; ++i) {
    const Drawing& one = store.drawings[i];
    if (u"Drawing " + IntegerText(i + 1) == one.name && one.settings.itemCount == 0) return i;
  }
  return -1;
}

// Of the drawings that have such a name already: the first whose lines a block keeps, else the
// first of all, for which the user is asked. They pile up where lines are changed and not accepted.
Target GivingWay(const CadStore& store, const WantedDrawing& wanted) {
  Target first;
  for (int number = 1; number <= kMaxDrawings; ++number) {
    const std::u16string name = NameOf(wanted, number);
    const int index = IndexOf(store, name);
    if (index < 0 || IsOfABlock(store.drawings[index])) continue;
    const bool kept = IsKept(wanted, store.drawings[index]);
    if (kept || first.index < 0) first = {index, name, false, true, !kept};
    if (kept) break;
  }
  return first;
}

bool MayGiveWay(const Target& to, const WantedDrawing& wanted) {
  const std::uint64_t serial = ActiveSerial();
  const std::u16string words =
      u"Every drawing tab is in use. These lines would take the place of \u201C" + to.name +
      u"\u201D, whose lines stand in no block of the program. Draw over them? Undo brings them "
      u"back as long as the drawing is up.";
  return platform::ShowBox(wanted.name, words, platform::BoxButtons::NoYes,
                           platform::BoxIcon::Warning) == platform::BoxAnswer::Yes &&
         ActiveSerial() == serial;
}

// A sketch of the program may have come up in the drawing since, which is then the part's.
bool IsStillTheOne(const CadStore& store) {
  if (shown.index >= static_cast<int>(store.count)) return false;
  return store.drawings[shown.index].block.id == shown.block;
}

// The one that was up before, else the wanted one of those with such a name, else a free one.
Target TargetFor(const ProgramTab& tab, const WantedDrawing& wanted) {
  SaveLiveDrawing();  // so that all are looked at alike
  const CadStore& store = *tab.cadStore;
  if (wanted.again && shown.program == tab.serial && IsStillTheOne(store)) {
    return {shown.index, store.drawings[shown.index].name, true};
  }
  std::u16string name;
  for (int number = 1; number <= kMaxDrawings; ++number) {
    const std::u16string one = NameOf(wanted, number);
    const int index = IndexOf(store, one);
    const bool taken = index >= 0 && wanted.start.empty() && IsOfABlock(store.drawings[index]);
    if (index >= 0 && !taken && IsIt(wanted, store.drawings[index])) {
      return {index, one, wanted.start.empty() || store.drawings[index].settings.itemCount > 0};
    }
    if (index < 0 && name.empty()) name = one;
  }
  const int free = name.empty() ? -1 : FreeDrawing(store);
  return free >= 0 ? Target{free, name} : GivingWay(store, wanted);
}

void DrawStart(const WantedDrawing& wanted, bool taken) {
  if (wanted.start.empty() && !taken) return;
  static FeatureSettings record;
  StartSketchRecord(record, wanted.metric);
  record.itemCount =
      static_cast<std::int32_t>(std::min<std::size_t>(wanted.start.size(), kMaxItems));
  for (int i = 0; i < record.itemCount; ++i) {
    record.items[i] = ItemOf(wanted.start[static_cast<std::size_t>(i)]);
  }
  TakeSketchItems(record);
}

void BringUp(ProgramTab& tab, const Target& to, const WantedDrawing& wanted) {
  if (to.index == static_cast<int>(tab.cadStore->count)) AddDrawing(tab);
  SwitchDrawing(tab, static_cast<std::uint32_t>(to.index));
  shown = {tab.serial, to.index, tab.cadStore->drawings[to.index].block.id};
  if (to.stands) return;
  NameActiveDrawing(tab, to.name);
  if (to.taken) {
    const FormerDrawing former = LiveFormerDrawing();
    DropSketchUndoForBlock(&former);
  }
  DrawStart(wanted, to.taken);
  ProgramChanged({.autosave = true});
}

// Before any surface comes up, so that a refusal leaves the builder as it is.
bool HasRoom(const WantedDrawing& wanted) {
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->cadStore) return tab != nullptr;
  const Target to = TargetFor(*tab, wanted);
  return to.index >= 0 && (!to.asked || MayGiveWay(to, wanted));
}

bool OpenWantedDrawing(const WantedDrawing& wanted) {
  if (!HasRoom(wanted)) {
    ShowStatus(wanted.full);
    return false;
  }
  const std::int32_t from = app.surface;
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  ProgramTab* tab = ProvideDrawings();
  const Target to = tab ? TargetFor(*tab, wanted) : Target();
  if (to.index < 0) {
    Call(hooks.setSurface, static_cast<int>(from));
    ShowStatus(wanted.full);
    return false;
  }
  CancelTools();
  BringUp(*tab, to, wanted);
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
  return shown.program == tab->serial && shown.index == static_cast<int>(tab->cadStore->active);
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
    if (SelectDragging()) return false;  // what is dragged goes back first
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
  // What was sent from here as a sketch is the wanted one all the same.
  if (WantedIsUp()) shown.block = ActiveTab()->cadStore->drawings[shown.index].block.id;
  drawing = WantedDrawing();
  place = WantedPlace();
  builder = kSurfaceCode;
}

void RegisterWanted() {
  shown = {};
  hooks.openDrawing = OpenWantedDrawing;
  hooks.pickInDrawing = PickWantedPlace;
  cadHooks.takePress = TakePress;
}

}  // namespace morva
