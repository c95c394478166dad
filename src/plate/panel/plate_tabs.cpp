#include "plate/panel/plate_tabs.h"

#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "app/tab_row.h"
#include "documents/companions.h"
#include "documents/edit_link.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/panel/plate_live.h"
#include "plate/tools/plate_drawings.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_fields.h"
#include "plate/tools/plate_saving.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/message.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

// The block that a builder has open, and the editor, belong to the plate that goes.
void Switch(ProgramTab& tab, std::uint32_t index) {
  DropPlateDrag();
  if (!SwitchPlateDrawing(tab, index)) return;
  DropEditLink();
  ClosePlateEditor();
  ResetPlateView();
  ShowPlateFields();
  Call(hooks.layout);
  if (PlateLacksName()) OpenPlateNaming(false);
}

void OnTab(int id, int) {
  ProgramTab* tab = ProvidePlates();
  if (!tab || !MayPlateGo()) return;
  Switch(*tab, static_cast<std::uint32_t>(id - kIdPlateTabFirst));
}

void OnAdd(int, int) {
  ProgramTab* tab = ProvidePlates();
  // Nothing is added where the plate that is shown cannot go.
  if (!tab || !MayPlateGo() || !SaveLivePlate()) return;
  const int index = AddPlateDrawing(*tab);
  if (index < 0) {
    platform::ShowBox(kPlatesFullTitle, kPlatesFull, platform::BoxButtons::Ok,
                      platform::BoxIcon::Information);
    return;
  }
  ProgramChanged({.autosave = true});
  Switch(*tab, static_cast<std::uint32_t>(index));
}

}  // namespace

void RefreshPlateTabs() {
  const ProgramTab* tab = ActiveTab();
  const PlateStore* store = tab ? tab->plateStore : nullptr;
  const int count = store ? static_cast<int>(store->count) : 1;
  std::vector<std::u16string> names;
  for (int i = 1; i <= count; ++i) names.push_back(u"Plate " + IntegerText(i));
  ShowTabRow(kIdPlateTabFirst, kMaxPlates, names, store ? static_cast<int>(store->active) : 0);
}

void RegisterPlateTabs() {
  const int click = platform::kNotifyClick;
  RegisterCommand(RouterStage::Builder, kIdPlateTabFirst, kIdPlateTabLast, click, OnTab);
  RegisterCommand(RouterStage::Builder, kIdPlateTabAdd, click, OnAdd);
}

}  // namespace morva
