#include "plate/panel/plate_room.h"

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/router.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/model/plate.h"
#include "plate/panel/plate_commands.h"
#include "plate/panel/plate_insert.h"
#include "plate/panel/plate_live.h"
#include "plate/panel/plate_surface.h"
#include "plate/panel/plate_tabs.h"
#include "plate/panel/plate_workspace.h"
#include "plate/tools/plate_drawings.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_fields.h"
#include "plate/tools/plate_list.h"
#include "plate/tools/plate_print.h"
#include "plate/tools/plate_saving.h"
#include "platform/events.h"

namespace morva {

void RegisterPlateRoom() {
  AddCommands(PlateCommands());
  RegisterPlateSurface();
  RegisterPlateInsert();
  RegisterPlateWorkspace();
  RegisterPlateLive();
  RegisterPlateTabs();
  RegisterPlateEditor();
  RegisterPlateFields();
  RegisterPlateList();
  RegisterCommand(RouterStage::Builder, kIdPlateFit, platform::kNotifyClick,
                  [](int, int) { FitPlate(); });
  RegisterCommand(RouterStage::Builder, kIdPlatePrint, platform::kNotifyClick,
                  [](int, int) { PrintPlate(); });
}

void ResetPlateRoom() {
  ResetPlateWorkspace();
  ResetPlateEditor();
  ResetPlatePointer();
  ResetPlateView();
  ResetPlateInsert();
  ResetPlateDrawings();
  ResetPlateSaving();
  ResetPlate();
}

}  // namespace morva
