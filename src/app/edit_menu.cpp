#include "app/edit_menu.h"

#include "app/command_ids.h"
#include "platform/control.h"
#include "platform/menu.h"

namespace morva {

bool EditKey(int id, const platform::KeyEvent& key) {
  if (!key.alt || key.ctrl || !platform::IsTextControl(id)) return false;
  switch (key.key) {
    case 'C':
      platform::RunEditAction(id, platform::EditAction::Copy);
      return true;
    case 'V':
      platform::RunEditAction(id, platform::EditAction::Paste);
      return true;
    case 'Z':
      platform::RunEditAction(id, platform::EditAction::Undo);
      return true;
    default:
      return false;
  }
}

bool EditContextMenu(int id, int x, int y) {
  if (!platform::IsTextControl(id)) return false;
  const platform::MenuItem items[] = {
      {kIdEditUndo, u"Undo\tAlt+Z"},
      {},
      {kIdEditCut, u"Cut\tCtrl+X"},
      {kIdEditCopy, u"Copy\tAlt+C"},
      {kIdEditPaste, u"Paste\tAlt+V"},
      {},
      {kIdEditSelectAll, u"Select All\tCtrl+A"},
  };
  switch (platform::ShowPopup(items, 7, x, y)) {
    case kIdEditUndo:
      platform::RunEditAction(id, platform::EditAction::Undo);
      break;
    case kIdEditCut:
      platform::RunEditAction(id, platform::EditAction::Cut);
      break;
    case kIdEditCopy:
      platform::RunEditAction(id, platform::EditAction::Copy);
      break;
    case kIdEditPaste:
      platform::RunEditAction(id, platform::EditAction::Paste);
      break;
    case kIdEditSelectAll:
      platform::RunEditAction(id, platform::EditAction::SelectAll);
      break;
    default:
      break;
  }
  return true;
}

}  // namespace morva
