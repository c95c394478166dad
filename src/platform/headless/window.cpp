// The main window, the drawn views and what every placed thing has in common.

#include "platform/window.h"

#include <algorithm>
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

std::vector<std::unique_ptr<Item>> items;
std::unordered_map<int, Item*> byId;
std::vector<int> tabOrder;
int focused = 0;
int pointerOver = 0;
int captured = 0;
bool ctrlHeld = false;
bool buttonHeld = false;

void ResetWindow() {
  window = MainWindow();
  items.clear();
  byId.clear();
  tabOrder.clear();
  focused = pointerOver = captured = 0;
  ctrlHeld = buttonHeld = false;
}
ResetHook hook(1, ResetWindow);

void TellFocus(int id, bool gained) {
  const platform::Events& events = platform::Listener();
  if (id != 0 && events.focusChanged) events.focusChanged(id, gained);
}

void MoveFocus(int id) {
  if (focused == id) return;
  const int former = std::exchange(focused, id);
  TellFocus(former, false);
  if (focused == id) TellFocus(id, true);
}

// A thing that went out of sight or use cannot keep the keyboard.
void DropUselessFocus() {
  if (focused != 0 && !CanBeUsed(focused)) MoveFocus(0);
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

Item* Find(int id) {
  const auto found = byId.find(id);
  return found == byId.end() ? nullptr : found->second;
}

Item* NewItem(int id, Kind kind, int parent, bool hidden) {
  if (FaultFor("control") || id == platform::kMainWindow || Find(id)) return nullptr;
  auto item = std::make_unique<Item>();
  item->id = id;
  item->kind = kind;
  item->parent = parent;
  item->visible = !hidden;
  Item* made = item.get();
  items.push_back(std::move(item));
  byId[id] = made;
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
void SetPointerOver(int id) { pointerOver = id; }
int CapturedView() { return captured; }

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
  items.clear();
  byId.clear();
  focused = pointerOver = captured = 0;
  return true;
}

bool WindowClosed() { return window.closed; }

bool FocusNext(bool backwards) {
  std::vector<int> ring;
  for (int id : tabOrder) {
    if (Find(id)) ring.push_back(id);
  }
  for (const auto& item : items) {
    if (std::find(ring.begin(), ring.end(), item->id) == ring.end()) ring.push_back(item->id);
  }
  if (backwards) std::reverse(ring.begin(), ring.end());
  const auto here = std::find(ring.begin(), ring.end(), focused);
  std::rotate(ring.begin(), here == ring.end() ? ring.begin() : here + 1, ring.end());
  for (int id : ring) {
    if (id == focused || !TakesKeyboard(*Find(id)) || !CanBeUsed(id)) continue;
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
  window.minimumWidth = spec.minimumWidth;
  window.minimumHeight = spec.minimumHeight;
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
  return true;
}

int ViewByClass(std::u16string_view className) {
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
  if (!Find(id)) return;
  std::vector<int> children;
  for (const auto& item : headless::items) {
    if (item->parent == id) children.push_back(item->id);
  }
  for (int child : children) Destroy(child);
  if (headless::captured == id) headless::captured = 0;
  if (headless::pointerOver == id) headless::pointerOver = 0;
  headless::ForgetDialog(id);
  const bool held = headless::focused == id;
  headless::byId.erase(id);
  std::erase_if(headless::items, [id](const auto& item) { return item->id == id; });
  if (held) headless::focused = 0;
}

void SetPlace(int id, const Rect& place) {
  if (Item* item = Find(id)) item->place = place;
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
  } else if (item && headless::TakesKeyboard(*item) && headless::CanBeUsed(id)) {
    headless::MoveFocus(id);
  }
}

int FocusedId() { return headless::focused; }
void Repaint(int) {}
void BringToTop(int) {}
void SetTabOrder(const int* ids, int count) {
  // The first keeps its place in what was ordered before; the others come behind it.
  std::vector<int>& order = headless::tabOrder;
  if (count < 1) return;
  const auto moves = [&](int id) { return std::find(ids + 1, ids + count, id) != ids + count; };
  order.erase(std::remove_if(order.begin(), order.end(), moves), order.end());
  auto at = std::find(order.begin(), order.end(), ids[0]);
  if (at == order.end()) at = order.insert(at, ids[0]);
  order.insert(at + 1, ids + 1, ids + count);
}

int IdUnderPointer() {
  return headless::pointerOver == kMainWindow || IsVisible(headless::pointerOver)
             ? headless::pointerOver
             : 0;
}

void CapturePointer(int view) { headless::captured = view; }
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
