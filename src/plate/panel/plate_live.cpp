#include "plate/panel/plate_live.h"

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "documents/edit_link.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_drawings.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_fields.h"
#include "plate/tools/plate_saving.h"
#include "platform/events.h"
#include "platform/message.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::BoxAnswer;

// Nothing of the plate that goes may float over the one that comes.
void Load(const FeatureSettings* record) {
  DropPlateDrag();
  LoadLivePlate(record);
  ClosePlateEditor();
  ResetPlateView();
  ShowPlateFields();
  Call(hooks.layout);
}

void OnReset(int, int) {
  if (platform::ShowBox(u"Reset plate",
                        u"Clear the plate and all its features from this workspace and start over? "
                        u"Previously saved shapes stay in your library.",
                        platform::BoxButtons::YesNo,
                        platform::BoxIcon::Question) != BoxAnswer::Yes) {
    return;
  }
  DropPlateDrag();
  DropEditLink();
  ClearPlate();
  ClosePlateEditor();
  ResetPlateView();
  ShowPlateFields();
  PlateEdited();
  Call(hooks.layout);
  OpenPlateNaming(true);
}

void OnNaming(int id, int) { OpenPlateNaming(id == kIdPlateCreate); }

BoxAnswer AskForName() {
  return platform::ShowBox(
      u"Save plate shape",
      u"Name and save this plate as a reusable shape before leaving? Yes returns to the name "
      u"field; No leaves without adding a library shape.",
      platform::BoxButtons::YesNoCancel, platform::BoxIcon::Question);
}

// What cannot be saved must not lock the user in.
bool MayLeaveUnsaved() {
  static FeatureSettings record;
  const char16_t* words =
      SavePlateSettings(record)
          ? u"The plate could not be saved as a reusable shape. Its program keeps it all the same. "
            u"Leave it as it is?"
          : u"The plate takes more than the file of its program can hold of one. It stays until "
            u"MORVA is closed. Leave it as it is?";
  const BoxAnswer answer = platform::ShowBox(
      u"Save plate shape", words, platform::BoxButtons::NoYes, platform::BoxIcon::Warning);
  return answer == BoxAnswer::Yes;
}

}  // namespace

bool PlateWindowExists() { return platform::Exists(kViewPlate); }

void LoadPlateOfProgram() {
  const ProgramTab* tab = ActiveTab();
  Load(tab ? tab->plateSettings : nullptr);
}

void FollowUnitOnPlate() {
  if (!plate.unnamed || plate.pending || plate.metric == UnitsMetric()) return;
  // A plate that the program holds keeps its unit; loading it again would go on for ever.
  const ProgramTab* tab = ActiveTab();
  if (!tab || !tab->plateSettings || (tab->plateSettings->metric != 0) == UnitsMetric())
    LoadPlateOfProgram();
}

void SavePendingPlate() {
  if (PlateWindowExists()) SavePendingShape();
}

bool MayLeavePlate() {
  if (!plate.pending || editLink.kind == kKindPlate) return true;
  if (plate.savedShapeIndex < 0) {
    const BoxAnswer answer = AskForName();
    if (answer == BoxAnswer::No) {
      SettlePlate(false);
      return true;
    }
    if (answer != BoxAnswer::Yes) return false;
    if (PlateLacksName()) {
      OpenPlateNaming(true);
      return false;
    }
  }
  return SaveNamedPlate() == PlateSave::Done || MayLeaveUnsaved();
}

void RegisterPlateLive() {
  liveModels.plateWindowExists = PlateWindowExists;
  liveModels.storePlate = StoreLivePlate;
  liveModels.loadPlate = Load;
  liveModels.plateName = []() -> const char16_t* { return plate.name; };
  const int click = platform::kNotifyClick;
  RegisterCommand(RouterStage::Builder, kIdPlateNaming, kIdPlateCreate, click, OnNaming);
  RegisterCommand(RouterStage::Builder, kIdPlateReset, click, OnReset);
}

}  // namespace morva
