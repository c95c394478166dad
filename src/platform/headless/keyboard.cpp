// The user's keyboard, pointer and mouse on lists and views.

#include <algorithm>
#include <utility>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

bool OfferKey(int id, const platform::KeyEvent& key) {
  const platform::Events& events = platform::Listener();
  return events.key && events.key(id, key);
}

bool IsCharacterKey(int key) { return (key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z'); }

char16_t CharacterOf(const platform::KeyEvent& key) {
  if (key.key == platform::kKeySpace) return u' ';
  if (!IsCharacterKey(key.key)) return 0;
  const int small = key.key >= 'A' && !key.shift ? 'a' - 'A' : 0;
  return static_cast<char16_t>(key.key + small);
}

// The key that types this character; kKeyNone for one that has no name of its own.
platform::KeyEvent KeyOf(char16_t c) {
  platform::KeyEvent key;
  if (c >= u'a' && c <= u'z') {
    key.key = c - u'a' + 'A';
  } else if ((c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')) {
    key.key = c;
    key.shift = c >= u'A';
  } else if (c == u' ') {
    key.key = platform::kKeySpace;
  } else if (c == u'\n' || c == u'\r') {
    key.key = platform::kKeyEnter;
  } else if (c == u'\t') {
    key.key = platform::kKeyTab;
  }
  return key;
}

// Alt+C, Alt+V and Alt+Z work beside the control's own Ctrl keys.
bool RunTextShortcut(int id, const platform::KeyEvent& key) {
  using platform::EditAction;
  struct Shortcut {
    int key;
    bool ctrl;
    bool shift;
    bool alt;
    EditAction action;
  };
  constexpr Shortcut kShortcuts[] = {
      {'C', true, false, false, EditAction::Copy},
      {'C', false, false, true, EditAction::Copy},
      {'V', true, false, false, EditAction::Paste},
      {'V', false, false, true, EditAction::Paste},
      {'Z', true, false, false, EditAction::Undo},
      {'Z', false, false, true, EditAction::Undo},
      {'X', true, false, false, EditAction::Cut},
      {'A', true, false, false, EditAction::SelectAll},
      {'Y', true, false, false, EditAction::Redo},
      {'Z', true, true, false, EditAction::Redo},
      {platform::kKeyDelete, false, true, false, EditAction::Cut},
  };
  for (const Shortcut& each : kShortcuts) {
    if (each.key != key.key || each.ctrl != key.ctrl || each.shift != key.shift ||
        each.alt != key.alt) {
      continue;
    }
    const std::uint64_t before = platform::EditorRevision(id);
    platform::RunEditAction(id, each.action);
    // The keys with Alt are the application's, and no keys of the editor.
    if (!key.alt && platform::EditorRevision(id) != before) TellEditingKey(id);
    return true;
  }
  return false;
}

bool IsCaretKey(int key) { return key >= platform::kKeyUp && key <= platform::kKeyPageDown; }

void PressInEditor(int id, const platform::KeyEvent& key) {
  if (RunTextShortcut(id, key) || key.alt) return;
  const Item* item = Find(id);
  if (!item || !item->editor) return;
  if (key.key == platform::kKeyTab && (item->editor->readOnly || key.shift || key.ctrl)) {
    // Where nothing can be written Tab is no character.
    FocusNext(key.shift);
  } else if (IsCaretKey(key.key)) {
    MoveEditorCaret(id, key);
  } else if (key.key == platform::kKeyDelete || key.key == platform::kKeyBackspace) {
    EraseInEditor(id, key.key == platform::kKeyDelete);
  } else if (key.ctrl) {
    return;
  } else if (key.key == platform::kKeyEnter) {
    TypeCharacter(id, u'\n');
  } else if (key.key == platform::kKeyTab) {
    TypeCharacter(id, u'\t');
  } else if (const char16_t c = CharacterOf(key)) {
    TypeCharacter(id, c);
  }
}

void PressInEdit(int id, const platform::KeyEvent& key) {
  if (RunTextShortcut(id, key) || key.alt) return;
  Item* item = Find(id);
  if (!item) return;
  if (key.key == platform::kKeyTab) {
    FocusNext(key.shift);
  } else if (IsCaretKey(key.key)) {
    MoveEditCaret(*item, key);
  } else if (key.key == platform::kKeyDelete) {
    platform::RunEditAction(id, platform::EditAction::Delete);
  } else if (key.key == platform::kKeyBackspace) {
    EraseBeforeCaret(id);
  } else if (key.ctrl) {
    return;
  } else if (key.key == platform::kKeyEnter && item->kind == Kind::Log) {
    SendCommand(id, platform::kNotifyListDouble);
  } else if (key.key == platform::kKeyEnter && item->kind == Kind::MultiEdit) {
    TypeCharacter(id, u'\n');
  } else if (const char16_t c = CharacterOf(key)) {
    TypeCharacter(id, c);
  }
}

// The row that a key goes to; -1 for none.
int RowAfterKey(const Item& item, const platform::KeyEvent& key) {
  const int count = static_cast<int>(item.list.rows.size());
  const int current = item.list.current;
  switch (key.key) {
    case platform::kKeyDown:
      return std::min(current + 1, count - 1);
    case platform::kKeyUp:
      return std::max(current - 1, 0);
    case platform::kKeyHome:
      return 0;
    case platform::kKeyEnd:
      return count - 1;
    case platform::kKeyPageDown:
      return item.kind == Kind::Combo ? -1 : std::min(current + RowsInView(item), count - 1);
    case platform::kKeyPageUp:
      return item.kind == Kind::Combo ? -1 : std::max(current - RowsInView(item), 0);
    default:
      return key.ctrl || key.alt ? -1 : RowBeginningWith(item, CharacterOf(key));
  }
}

void PressInList(int id, const platform::KeyEvent& key) {
  const Item* item = Find(id);
  if (!item) return;
  if (key.key == platform::kKeyTab) {
    FocusNext(key.shift);
    return;
  }
  if (key.key == platform::kKeyEnter) {
    const bool told = item->kind != Kind::Combo && item->list.current >= 0;
    if (told) SendCommand(id, platform::kNotifyListDouble);
    return;
  }
  if (key.key == 'A' && key.ctrl && !key.alt) {
    ChooseAllRows(id);
    return;
  }
  const int row = RowAfterKey(*item, key);
  if (row < 0 || row == item->list.current) return;
  if (key.shift && item->kind == Kind::MultiList) {
    StretchRows(id, row);
  } else {
    ChooseRow(id, row);
  }
}

void PressElsewhere(int id, Kind kind, const platform::KeyEvent& key) {
  const bool button = kind == Kind::Button || kind == Kind::Check;
  const bool plain = !key.ctrl && !key.alt;
  const bool back = key.key == platform::kKeyLeft || key.key == platform::kKeyUp;
  const bool on = key.key == platform::kKeyRight || key.key == platform::kKeyDown;
  // Enter presses a button only: with a check box it is the dialog's.
  const bool presses =
      key.key == platform::kKeySpace || (key.key == platform::kKeyEnter && kind == Kind::Button);
  if (key.key == platform::kKeyTab) {
    FocusNext(key.shift);
  } else if (button && (back || on)) {
    FocusNext(back);
  } else if (button && plain && presses) {
    Click(id);
  }
}

void PressIn(int id, const platform::KeyEvent& key) {
  const Item* item = Find(id);
  if (!item) return;
  switch (item->kind) {
    case Kind::Editor:
      return PressInEditor(id, key);
    case Kind::Edit:
    case Kind::MultiEdit:
    case Kind::Log:
      return PressInEdit(id, key);
    case Kind::List:
    case Kind::MultiList:
    case Kind::Combo:
      return PressInList(id, key);
    default:
      return PressElsewhere(id, item->kind, key);
  }
}

bool IsListItem(const Item& item) {
  return item.kind == Kind::List || item.kind == Kind::MultiList;
}

// A left click on a row: it is selected on the press and told on the release.
bool ClickRow(int id, int row, int x) {
  const Item* item = Find(id);
  if (!item || !IsListItem(*item) || !CanBeUsed(id)) return false;
  if (row < 0 || row >= static_cast<int>(item->list.rows.size())) return false;
  platform::SetFocusTo(id);
  ChooseRow(id, row);
  const platform::Events& events = platform::Listener();
  const int y = platform::RowPlace(id, row).top + 1;
  if (events.listClick && Find(id)) events.listClick(id, row, x, y);
  return true;
}

}  // namespace

bool PressKey(const platform::KeyEvent& key) {
  const int id = platform::FocusedId();
  HoldCtrl(key.ctrl);
  // A dialog's keys are its own: nothing behind it hears them.
  const bool handled =
      OpenDialog() != 0 ? PressDialogKey(key) : OfferKey(id == 0 ? platform::kMainWindow : id, key);
  if (!handled && id == 0 && key.key == platform::kKeyTab) FocusNext(key.shift);
  if (!handled && id != 0) PressIn(id, key);
  HoldCtrl(false);
  return true;
}

bool EditorInsert(int id, std::u16string_view text) {
  const Item* item = Find(id);
  if (!item || !item->editor || item->editor->readOnly || !CanBeUsed(id)) return false;
  platform::SetFocusTo(id);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
    const platform::KeyEvent key = KeyOf(text[i]);
    if (key.key != platform::kKeyNone && OfferKey(id, key)) continue;
    TypeCharacter(id, text[i]);
  }
  return true;
}

void TypeText(std::u16string_view text) {
  for (const char16_t c : text) {
    const int id = platform::FocusedId();
    const platform::KeyEvent key = KeyOf(c);
    if (key.key != platform::kKeyNone) {
      PressKey(key);
    } else {
      const bool heard = c < 0x7F && OpenDialog() == 0 && OfferKey(id, {c, false, false, false});
      if (!heard) TypeCharacter(id, c);
    }
  }
}

bool ClickInRow(int id, int row, int x) { return ClickRow(id, row, x); }

bool Wheel(int id, int notches) {
  constexpr int kEditorLines = 3;
  const Item* item = Find(id);
  if (!item || !CanBeUsed(id)) return false;
  if (item->editor) {
    platform::ScrollToLine(id, platform::FirstVisibleLine(id) - notches * kEditorLines);
    return true;
  }
  return WheelRows(id, -notches * item->list.wheelRows);
}

bool WheelRows(int id, int rows) {
  const Item* item = Find(id);
  if (!item || !IsListItem(*item) || !CanBeUsed(id)) return false;
  const int before = platform::TopRow(id);
  platform::SetTopRow(id, before + rows);
  if (platform::TopRow(id) != before) SendCommand(id, platform::kNotifyVScroll);
  return true;
}

bool DoubleClickRow(int id, int row) {
  if (!ClickRow(id, row, 0)) return false;
  if (Find(id)) SendCommand(id, platform::kNotifyListDouble);
  return true;
}

bool ContextMenu(int id, int row) {
  if (!CanBeUsed(id)) return false;
  platform::Rect place = platform::PlaceInMainWindow(id);
  const platform::Rect rowPlace = platform::RowPlace(id, row);
  int x = (place.left + place.right) / 2;
  int y = (place.top + place.bottom) / 2;
  if (platform::RectHeight(rowPlace) > 0) y = place.top + (rowPlace.top + rowPlace.bottom) / 2;
  const platform::Events& events = platform::Listener();
  return events.contextMenu && events.contextMenu(id, row, x, y);
}

bool Focus(int id) {
  const Item* item = Find(id);
  if (!item || !TakesKeyboard(*item) || !CanBeUsed(id)) return false;
  platform::SetFocusTo(id);
  return true;
}

bool Pointer(int view, const platform::PointerEvent& event) {
  const Item* item = Find(view);
  if (view != platform::kMainWindow) {
    if (!item || !CanBeUsed(view)) return false;
    const bool over = item->kind == Kind::Editor && event.action == platform::PointerAction::Move;
    if (item->kind != Kind::View && !over) return false;
  } else if (!platform::Exists(view) || OpenDialog() != 0) {
    return false;
  }
  const platform::Rect around = platform::PlaceInMainWindow(view);
  SetPointerOver(view, around.left + event.x, around.top + event.y);
  HoldCtrl(event.ctrl);
  using platform::PointerAction;
  const bool down =
      event.action == PointerAction::Press || event.action == PointerAction::DoubleClick;
  if (down || event.action == PointerAction::Release) HoldView(down ? view : 0);
  platform::PointerEvent told = event;
  int target = view;
  if (CapturedView() != 0 && CapturedView() != view) {
    const platform::Rect from = platform::PlaceInMainWindow(view);
    target = CapturedView();
    const platform::Rect to = platform::PlaceInMainWindow(target);
    told.x += from.left - to.left;
    told.y += from.top - to.top;
  }
  if (event.action == platform::PointerAction::Press && item && item->takesFocus) {
    platform::SetFocusTo(view);
  }
  const platform::Events& events = platform::Listener();
  const bool used = events.pointer && events.pointer(target, told);
  if (event.action == platform::PointerAction::DoubleClick && !used && Find(target)) {
    // Who makes nothing of a double click sees a second press.
    told.action = platform::PointerAction::Press;
    if (events.pointer) events.pointer(target, told);
  }
  if (event.action == platform::PointerAction::Release) platform::ReleasePointer();
  // The right button asks for the context menu once it is up.
  if (event.action == platform::PointerAction::Release &&
      event.button == platform::PointerButton::Right && view != platform::kMainWindow &&
      Find(view) && events.contextMenu) {
    const platform::Rect place = platform::PlaceInMainWindow(view);
    events.contextMenu(view, -1, place.left + event.x, place.top + event.y);
  }
  HoldCtrl(false);
  return true;
}

void MovePointerOver(int id) {
  const int former = platform::IdUnderPointer();
  const platform::Rect place = platform::PlaceInMainWindow(id);
  SetPointerOver(id, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
  const Item* left = Find(former);
  if (former == id || !left || left->kind != Kind::View) return;
  platform::PointerEvent leave;
  leave.action = platform::PointerAction::Leave;
  const platform::Events& events = platform::Listener();
  if (events.pointer) events.pointer(former, leave);
}

}  // namespace headless
