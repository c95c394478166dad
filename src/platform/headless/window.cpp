// The main window, the drawn views and what every placed thing has in common.

#include "platform/window.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

struct MainWindow {
  bool exists = false;
  bool shown = false;
  bool closed = false;
  std::u16string className;
  std::u16string title;
  platform::Rect client;
  int minimumWidth = 0;
  int minimumHeight = 0;
  int quitCode = 0;
};
MainWindow window;

constexpr int kLargeScreen = 4096;  // pixels either way
int screenWidth = kLargeScreen;
int screenHeight = kLargeScreen;

std::vector<std::unique_ptr<Item>> items;

// Things by id. Asked for at every step, so that nearly all ids stand in a plain table.
class ItemTable {
 public:
  Item* Find(int id) const {
    if (IsDirect(id))
      return static_cast<std::size_t>(id) < direct_.size() ? direct_[At(id)] : nullptr;
    const auto found = others_.find(id);
    return found == others_.end() ? nullptr : found->second;
  }
  void Put(int id, Item* item) {
    if (!IsDirect(id)) {
      others_[id] = item;
      return;
    }
    if (direct_.size() <= At(id)) direct_.resize(At(id) + kStep);
    direct_[At(id)] = item;
  }
  void Erase(int id) {
    if (!IsDirect(id)) {
      others_.erase(id);
    } else if (At(id) < direct_.size()) {
      direct_[At(id)] = nullptr;
    }
  }

 private:
  static constexpr int kMostDirect = 32768;
  static constexpr std::size_t kStep = 1024;
  static bool IsDirect(int id) { return id >= 0 && id < kMostDirect; }
  static std::size_t At(int id) { return static_cast<std::size_t>(id); }

  std::vector<Item*> direct_;
  std::unordered_map<int, Item*> others_;
};
ItemTable byId;

std::vector<int> chain;  // every id in the order of Tab
unsigned heights = 0;
int focused = 0;
int captured = 0;
int held = 0;  // the view that a button went down on
bool ctrlHeld = false;
bool buttonHeld = false;

// Where the pointer stands. What was named to it lies under it as long as it is shown; then what
// lies at its place does.
struct PointerPlace {
  int over = 0;
  int x = -1;  // main-window pixels
  int y = -1;
  unsigned moves = 0;
};
PointerPlace pointer;

void DropItems() {
  for (const auto& item : items) byId.Erase(item->id);
  items.clear();
}

void ResetWindow() {
  screenWidth = screenHeight = kLargeScreen;
  window = MainWindow();
  DropItems();
  chain.clear();
  focused = captured = held = 0;
  pointer = PointerPlace{.moves = pointer.moves};
  heights = 0;
  ctrlHeld = buttonHeld = false;
}
ResetHook hook(1, ResetWindow);

void TellFocus(int id, bool gained) {
  const platform::Events& events = platform::Listener();
  if (id != 0 && events.focusChanged) events.focusChanged(id, gained);
}

// An edit line that loses the keyboard forgets its selection.
void Deselect(int id) {
  Item* item = Find(id);
  if (item && item->kind == Kind::Edit) item->edit.anchor = item->edit.caret;
}

void MoveFocus(int id) {
  if (focused == id) return;
  const int former = std::exchange(focused, id);
  Deselect(former);
  TellFocus(former, false);
  if (focused == id) TellFocus(id, true);
}

// A thing that went out of sight or use hands the keyboard on to the next.
void DropUselessFocus() {
  if (focused != 0 && !CanBeUsed(focused) && !FocusNext(false)) MoveFocus(0);
}

bool EnabledWithParents(const Item& item) {
  if (!item.enabled) return false;
  const Item* parent = Find(item.parent);
  return !parent || EnabledWithParents(*parent);
}

bool VisibleWithParents(const Item& item) {
  if (!item.visible) return false;
  const Item* parent = Find(item.parent);
  return !parent || VisibleWithParents(*parent);
}

}  // namespace

Item* Find(int id) { return byId.Find(id); }

Item* NewItem(int id, Kind kind, int parent, bool hidden) {
  if (FaultFor("control") || id == platform::kMainWindow || Find(id)) return nullptr;
  if (parent != platform::kMainWindow && !Find(parent)) return nullptr;
  auto item = std::make_unique<Item>();
  item->id = id;
  item->kind = kind;
  item->parent = parent;
  item->visible = !hidden;
  item->height = ++heights;
  Item* made = item.get();
  items.push_back(std::move(item));
  byId.Put(id, made);
  chain.push_back(id);
  return made;
}

const std::vector<std::unique_ptr<Item>>& Items() { return items; }

bool CanBeUsed(int id) {
  const Item* item = Find(id);
  return item && !IsBehindDialog(id) && VisibleWithParents(*item) && EnabledWithParents(*item);
}

bool IsTextItem(const Item& item) {
  return item.kind == Kind::Edit || item.kind == Kind::MultiEdit || item.kind == Kind::Log ||
         item.kind == Kind::Editor;
}

bool TakesKeyboard(const Item& item) {
  if (item.kind == Kind::Label) return false;
  const bool asked = item.kind == Kind::View || item.kind == Kind::List ||
                     item.kind == Kind::MultiList || item.kind == Kind::Combo;
  return !asked || item.takesFocus;
}

void HoldCtrl(bool held) { ctrlHeld = held; }
void HoldButton(bool held) { buttonHeld = held; }

void SetPointerOver(int id, int x, int y) {
  if (id != pointer.over || x != pointer.x || y != pointer.y) ++pointer.moves;
  pointer.over = id;
  pointer.x = x;
  pointer.y = y;
}

int CapturedView() { return captured; }
void HoldView(int view) { held = view; }

void LosePointer() {
  const int view = captured != 0 ? captured : held;
  captured = held = 0;
  if (view == 0) return;
  platform::PointerEvent lost;
  lost.action = platform::PointerAction::Lost;
  const platform::Events& events = platform::Listener();
  if (events.pointer) events.pointer(view, lost);
}

platform::ViewValue ValueOfView(int id) {
  platform::ViewValue value;
  const Item* item = Find(id);
  const platform::Events& events = platform::Listener();
  if (item && item->kind == Kind::View && events.viewValue) events.viewValue(id, value);
  return value;
}

bool ChooseValue(int id, int step) {
  const Item* item = Find(id);
  if (!item || item->role != platform::ViewRole::Slider || !CanBeUsed(id)) return false;
  const platform::ViewValue value = ValueOfView(id);
  const platform::Events& events = platform::Listener();
  if (events.chooseValue) {
    events.chooseValue(id, std::clamp(step, value.least, std::max(value.least, value.most)));
  }
  return true;
}

std::vector<int> AllIds() {
  std::vector<int> ids;
  for (const auto& item : items) ids.push_back(item->id);
  return ids;
}

void Resize(int width, int height) {
  if (!window.exists) return;
  const platform::Rect place{0, 0, std::max(width, window.minimumWidth),
                             std::max(height, window.minimumHeight)};
  if (platform::SameRect(place, window.client)) return;
  window.client = place;
  const platform::Events& events = platform::Listener();
  if (events.resized) events.resized(place.right, place.bottom);
}

void SetScreen(int width, int height) {
  screenWidth = width;
  screenHeight = height;
}

bool CloseKey() {
  if (!window.exists) return false;
  if (OpenDialog() != 0) {
    CancelDialog();
    return false;
  }
  const platform::Events& events = platform::Listener();
  if (events.closing && !events.closing()) return false;
  window.exists = window.shown = false;
  window.closed = true;
  if (events.destroyed) events.destroyed();
  DropItems();
  chain.clear();
  focused = captured = held = 0;
  pointer = PointerPlace{.moves = pointer.moves};
  return true;
}

bool WindowClosed() { return window.closed; }

void Terminate() {
  const platform::Events& events = platform::Listener();
  if (events.terminated) events.terminated();
  platform::QuitLoop(0);
}

bool FocusNext(bool backwards, bool byTab) {
  std::vector<int> ring = chain;
  if (backwards) std::reverse(ring.begin(), ring.end());
  const auto here = std::find(ring.begin(), ring.end(), focused);
  if (here != ring.end()) std::rotate(ring.begin(), here + 1, ring.end());
  for (int id : ring) {
    if (id == focused || !TakesKeyboard(*Find(id)) || !CanBeUsed(id)) continue;
    const Item* item = Find(id);
    const bool selects = byTab && item->kind == Kind::Edit && item->edit.anchor == item->edit.caret;
    if (selects) platform::SelectAllText(id);
    MoveFocus(id);
    return true;
  }
  return false;
}

}  // namespace headless

namespace platform {

using headless::Find;
using headless::Item;
using headless::window;

bool MakeMainWindow(const MainWindowSpec& spec) {
  if (headless::FaultFor("window") || window.exists) return false;
  window.exists = true;
  window.className = spec.className;
  window.title = spec.title;
  window.client = {0, 0, RectWidth(spec.place), RectHeight(spec.place)};
  const bool narrow = spec.smallWidth > 0 && headless::screenWidth < spec.minimumWidth;
  const bool low = spec.smallHeight > 0 && headless::screenHeight < spec.minimumHeight;
  window.minimumWidth = narrow ? spec.smallWidth : spec.minimumWidth;
  window.minimumHeight = low ? spec.smallHeight : spec.minimumHeight;
  if (narrow || low) window.client = {0, 0, headless::screenWidth, headless::screenHeight};
  return true;
}

void DarkTitleBar() {}

void SetWindowIcon(void (*)(Canvas&)) {}

void ShowMainWindow() {
  if (!window.exists || window.shown) return;
  window.shown = true;
  if (Listener().resized) Listener().resized(window.client.right, window.client.bottom);
}

void SetWindowTitle(std::u16string_view title) { window.title = title; }
std::u16string WindowTitle() { return window.title; }

Rect ClientArea(int id) {
  if (id == kMainWindow) return window.client;
  const Item* item = Find(id);
  if (!item) return {};
  return {0, 0, RectWidth(item->place), RectHeight(item->place)};
}

void RequestClose() { headless::CloseKey(); }
void QuitLoop(int code) { window.quitCode = code; }

// Nobody sits before this screen: what was posted is handled, then the loop is over.
int RunLoop() {
  headless::DrainPosts();
  return window.quitCode;
}

bool MakeView(const ViewSpec& spec) {
  Item* item = headless::NewItem(spec.id, headless::Kind::View, spec.parent, false);
  if (!item) return false;
  item->className = spec.className;
  item->name = spec.accessibleName;
  item->background = spec.background;
  item->takesFocus = spec.takesFocus;
  item->role = spec.role;
  return true;
}

void TellViewValue(int) {}

int ViewByClass(std::u16string_view className) {
  if (className.empty()) return 0;
  if (window.exists && window.className == className) return kMainWindow;
  for (const auto& item : headless::items) {
    if (item->kind == headless::Kind::View && item->className == className) return item->id;
  }
  return 0;
}

std::u16string_view ClassOf(int id) {
  if (id == kMainWindow) return window.className;
  const Item* item = Find(id);
  return item ? std::u16string_view(item->className) : std::u16string_view();
}

bool Exists(int id) { return id == kMainWindow ? window.exists : Find(id) != nullptr; }

void Destroy(int id) {
  // While its id still stands for it: the keyboard and a pressed button are told as lost.
  SetVisible(id, false);
  if (!Find(id)) return;
  std::vector<int> children;
  for (const auto& item : headless::items) {
    if (item->parent == id) children.push_back(item->id);
  }
  for (int child : children) Destroy(child);
  headless::ForgetDialog(id);
  headless::byId.Erase(id);
  std::erase(headless::chain, id);
  std::erase_if(headless::items, [id](const auto& item) { return item->id == id; });
  if (headless::focused == id) headless::focused = 0;
}

void SetPlace(int id, const Rect& place) {
  Item* item = Find(id);
  if (!item || headless::IsWindow(*item)) return;
  const Rect wanted{place.left, place.top, std::max(place.left, place.right),
                    std::max(place.top, place.bottom)};
  if (SameRect(item->place, wanted)) return;
  item->place = wanted;
  headless::FillList(*item);
  headless::FillEditor(id);
}

Rect PlaceOf(int id) {
  if (id == kMainWindow) return window.client;
  const Item* item = Find(id);
  return item ? item->place : Rect();
}

void SetVisible(int id, bool visible) {
  Item* item = Find(id);
  if (!item || item->visible == visible) return;
  item->visible = visible;
  const int held = headless::captured != 0 ? headless::captured : headless::held;
  if (held != 0 && held != kMainWindow && !IsVisible(held)) headless::LosePointer();
  headless::DropUselessFocus();
}

bool IsVisible(int id) {
  if (id == kMainWindow) return window.shown;
  const Item* item = Find(id);
  return item && headless::VisibleWithParents(*item);
}

void SetEnabled(int id, bool enabled) {
  Item* item = Find(id);
  if (!item || item->enabled == enabled) return;
  item->enabled = enabled;
  headless::DropUselessFocus();
}

bool IsEnabled(int id) {
  if (id == kMainWindow) return window.exists;
  const Item* item = Find(id);
  return item && headless::EnabledWithParents(*item);
}

void SetFocusTo(int id) {
  const Item* item = Find(id);
  if (id == kMainWindow) {
    headless::MoveFocus(0);
  } else if (item && headless::TakesKeyboard(*item)) {
    if (headless::CanBeUsed(id)) {
      headless::MoveFocus(id);
    } else {
      headless::KeepForDialog(id);
    }
  }
}

int FocusedId() { return headless::focused; }
void Repaint(int) {}
void BringToTop(int id) {
  if (Item* item = Find(id)) item->height = ++headless::heights;
}
void SetTabOrder(const int* ids, int count) {
  std::vector<int>& chain = headless::chain;
  int before = 0;
  auto at = chain.end();  // where `before` stands
  for (int i = 0; i < count; ++i) {
    if (!Find(ids[i])) continue;
    if (before == 0) {
      at = std::find(chain.begin(), chain.end(), ids[i]);
    } else if (at + 1 != chain.end() && at[1] == ids[i]) {
      ++at;  // as before: an order that is set again moves nothing
    } else if (before != ids[i]) {
      std::erase(chain, ids[i]);
      at = chain.insert(std::find(chain.begin(), chain.end(), before) + 1, ids[i]);
    }
    before = ids[i];
  }
}

int IdUnderPointer() {
  const headless::PointerPlace& pointer = headless::pointer;
  if (pointer.over == 0 || pointer.over == kMainWindow) return pointer.over;
  return IsVisible(pointer.over) ? pointer.over : headless::IdAt(pointer.x, pointer.y);
}

unsigned PointerMoves() { return headless::pointer.moves; }

void CapturePointer(int view) {
  if (Exists(view)) headless::captured = view;
}
void ReleasePointer() { headless::captured = 0; }
bool CtrlHeld() { return headless::ctrlHeld; }
bool ButtonHeld() { return headless::buttonHeld; }

void SetPointerShape(int id, PointerShape shape) {
  if (Item* item = Find(id)) item->shape = shape;
}

Rect PlaceInMainWindow(int id) {
  Rect place = PlaceOf(id);
  const Item* item = Find(id);
  while (item) {
    const Item* parent = Find(item->parent);
    if (!parent) break;
    place.left += parent->place.left;
    place.right += parent->place.left;
    place.top += parent->place.top;
    place.bottom += parent->place.top;
    item = parent;
  }
  return place;
}

}  // namespace platform
