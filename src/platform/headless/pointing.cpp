// The user's pointer at a place of the main window: what lies there on the screen gets it.

#include <algorithm>
#include <utility>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;

constexpr int kLetter = 8;  // pixels of a character in an edit

// What a button that is down is tied to, and the list row that it went down on.
struct Hand {
  bool left = false;
  bool middle = false;
  bool right = false;
  int tied = 0;
  int row = -1;
};
Hand hand;

void ResetHand() { hand = Hand(); }
ResetHook hook(1, ResetHand);

bool& HeldBy(PointerButton button) {
  if (button == PointerButton::Middle) return hand.middle;
  return button == PointerButton::Right ? hand.right : hand.left;
}

bool AnyHeld() { return hand.left || hand.middle || hand.right; }

// The topmost child of `parent` at the parent's client pixels, and so on down; 0 for none.
int TopmostIn(int parent, int x, int y) {
  const Item* top = nullptr;
  for (const auto& item : Items()) {
    const bool here = item->parent == parent && item->visible && !IsWindow(*item) &&
                      platform::RectHolds(item->place, x, y);
    if (here && (!top || item->height > top->height)) top = item.get();
  }
  if (!top) return 0;
  const int inside = TopmostIn(top->id, x - top->place.left, y - top->place.top);
  return inside != 0 ? inside : top->id;
}

// A press on what takes none goes to what lies around it.
int TakerOf(int id) {
  const Item* item = Find(id);
  while (item && (item->kind == Kind::Label || !platform::IsEnabled(item->id))) {
    id = item->parent;
    item = Find(id);
  }
  return id;
}

int RowAt(const Item& item, int y) {
  const int row = item.list.top + y / std::max(1, item.list.rowHeight);
  return y >= 0 && row < static_cast<int>(item.list.rows.size()) ? row : -1;
}

bool IsBox(const Item& item) { return item.kind == Kind::List || item.kind == Kind::MultiList; }

// The right button asks for the context menu of what lies under it.
void AskForMenu(const Item& item, const PointerEvent& event) {
  const int id = item.id;
  const platform::Rect place = platform::PlaceInMainWindow(id);
  const int row = IsBox(item) ? RowAt(item, event.y) : -1;
  const platform::Events& events = platform::Listener();
  if (events.contextMenu) events.contextMenu(id, row, place.left + event.x, place.top + event.y);
}

void PressIn(int id, const PointerEvent& event) {
  const Item* item = Find(id);
  if (item && event.button == PointerButton::Right) AskForMenu(*item, event);
  if (!item || event.button != PointerButton::Left) return;
  if (IsBox(*item)) {
    hand.row = RowAt(*item, event.y);
    if (event.action == PointerAction::DoubleClick) {
      if (std::exchange(hand.row, -1) >= 0) SendCommand(id, platform::kNotifyListDouble);
    } else {
      PressRow(id, hand.row, event.ctrl, event.shift);
    }
    return;
  }
  platform::SetFocusTo(id);
  Item* held = Find(id);
  if (!held) return;
  if (held->editor) {
    const int at = platform::PositionAt(id, event.x, event.y);
    PlaceCaret(id, at, at);
  } else if (IsTextItem(*held)) {
    const int length = static_cast<int>(held->text.size());
    held->edit.anchor = held->edit.caret = std::clamp(event.x / kLetter, 0, length);
  } else {
    held->pressed = held->kind == Kind::Button || held->kind == Kind::Check;
  }
}

void ReleaseIn(int id, const PointerEvent& event) {
  Item* item = Find(id);
  if (!item || event.button != PointerButton::Left) return;
  const bool inside = platform::RectHolds(platform::ClientArea(id), event.x, event.y);
  const bool pressed = std::exchange(item->pressed, false);
  if (pressed && inside) {
    ClickAt(id, event.x);
  } else if (IsBox(*item) && hand.row >= 0) {
    const int row = RowAt(*item, event.y);
    const platform::Events& events = platform::Listener();
    if (row >= 0 && inside && events.listClick) events.listClick(id, row, event.x, event.y);
  }
}

// The wheel turns what scrolls, else it is told to the view around.
void TurnWheel(int id, const PointerEvent& event) {
  for (const Item* item = Find(id); item; item = Find(item->parent)) {
    if (Wheel(item->id, event.wheel)) return;
    if (item->kind == Kind::View) break;
    id = item->parent;
  }
  PointerEvent told = event;
  const platform::Rect place = platform::PlaceInMainWindow(id);
  told.x -= place.left;
  told.y -= place.top;
  Pointer(id, told);
}

void Tell(int id, PointerEvent event) {
  const platform::Rect place = platform::PlaceInMainWindow(id);
  event.x -= place.left;
  event.y -= place.top;
  const Item* item = Find(id);
  const bool drawn = id == platform::kMainWindow || (item && item->kind == Kind::View);
  if (drawn || (item && item->editor && event.action == PointerAction::Move)) {
    Pointer(id, event);
  } else if (event.action == PointerAction::Release) {
    ReleaseIn(id, event);
  } else if (event.action != PointerAction::Move) {
    PressIn(id, event);
  }
}

}  // namespace

int IdAt(int x, int y) {
  const int root = OpenDialog() != 0 ? OpenDialog() : platform::kMainWindow;
  const platform::Rect place = platform::PlaceInMainWindow(root);
  if (!platform::RectHolds(place, x, y)) return 0;
  const int id = TopmostIn(root, x - place.left, y - place.top);
  return id != 0 ? id : root;
}

void Mouse(const PointerEvent& event) {
  PointerEvent told = event;
  const int here = IdAt(event.x, event.y);
  SetPointerOver(here, event.x, event.y);
  if (event.action == PointerAction::Wheel) return TurnWheel(here, event);
  const bool down =
      event.action == PointerAction::Press || event.action == PointerAction::DoubleClick;
  if (down && !AnyHeld()) hand.tied = TakerOf(here);
  if (down) HeldBy(event.button) = true;
  if (event.action == PointerAction::Release) HeldBy(event.button) = false;
  told.leftDown = hand.left;
  told.middleDown = hand.middle;
  told.rightDown = hand.right;
  const int target = hand.tied != 0 ? hand.tied : here;
  if (!AnyHeld()) hand.tied = 0;
  HoldCtrl(event.ctrl);
  HoldButton(AnyHeld());
  if (target != 0) Tell(target, told);
  HoldCtrl(false);
}

}  // namespace headless
