#include "app/edit_menu.h"

#include "app/command_ids.h"
#include "platform/control.h"

namespace morva {

namespace {

using platform::EditAction;

constexpr Command kCommands[] = {
    {.id = kIdEditUndo, .words = u"Undo", .chord = AltKey(kTextChords, 'Z')},
    {.id = kIdEditCut, .words = u"Cut", .chord = CtrlKey(kToolkitChords, 'X')},
    {.id = kIdEditCopy, .words = u"Copy", .chord = AltKey(kTextChords, 'C')},
    {.id = kIdEditPaste, .words = u"Paste", .chord = AltKey(kTextChords, 'V')},
    {.id = kIdEditSelectAll, .words = u"Select All", .chord = CtrlKey(kToolkitChords, 'A')},
};

// False: no command of the menu.
bool RunOn(int control, int command) {
  switch (command) {
    case kIdEditUndo:
      platform::RunEditAction(control, EditAction::Undo);
      return true;
    case kIdEditCut:
      platform::RunEditAction(control, EditAction::Cut);
      return true;
    case kIdEditCopy:
      platform::RunEditAction(control, EditAction::Copy);
      return true;
    case kIdEditPaste:
      platform::RunEditAction(control, EditAction::Paste);
      return true;
    case kIdEditSelectAll:
      platform::RunEditAction(control, EditAction::SelectAll);
      return true;
    default:
      return false;
  }
}

}  // namespace

std::span<const Command> EditCommands() { return kCommands; }

bool EditKey(int id, const platform::KeyEvent& key) {
  if (!platform::IsTextControl(id)) return false;
  platform::KeyEvent unshifted = key;  // Shift makes no difference
  unshifted.shift = false;
  return RunOn(id, CommandOfChord(kTextChords, unshifted));
}

bool EditContextMenu(int id, int x, int y) {
  if (!platform::IsTextControl(id)) return false;
  constexpr MenuRow kRows[] = {
      {kIdEditUndo}, {}, {kIdEditCut}, {kIdEditCopy}, {kIdEditPaste}, {}, {kIdEditSelectAll},
  };
  RunOn(id, ShowCommandMenu(kRows, x, y));
  return true;
}

}  // namespace morva
