#include "plate/panel/plate_live.h"

#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "documents/edit_link.h"
#include "documents/program_tabs.h"
#include "documents/saver.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
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

constexpr char16_t kUnsavedTitle[] = u"Save plate shape";  // of every question of this kind

// Nothing of the plate that goes may float over the one that comes.
void Load(const FeatureSettings* record) {
  DropPlateDrag();
  LoadLivePlate(record);
  ClosePlateEditor();
  ResetPlateView();
  ShowPlateFields();
  Call(hooks.layout);
  if (app.surface == kSurfacePlate && PlateLacksName()) OpenPlateNaming(false);
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
      kUnsavedTitle,
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
  const BoxAnswer answer = platform::ShowBox(kUnsavedTitle, words, platform::BoxButtons::NoYes,
                                             platform::BoxIcon::Warning);
  return answer == BoxAnswer::Yes;
}

// The first field of the live plate that holds no usable number; -1: all read.
int RefusedValue() {
  int refused = -1;
  return PlateTextsRead(plate, refused) ? -1 : refused;
}

void FocusRefused() {
  const int refused = RefusedValue();
  if (refused >= 0 && refused < kPlateFormValues) {
    platform::SetFocusTo(FieldOfPlateValue(refused));
  }
}

// The words that `why` begins with are followed by the question. False: the user goes back to the
// field that they are about.
bool MayLoseHalfNumber(const ProgramTab& tab, const std::u16string& why, const char16_t* question) {
  const std::uint64_t serial = tab.serial;
  if (ConfirmedNoFirst(kUnsavedTitle, why + question)) return true;
  if (!ReturnToTab(serial)) return false;
  Call(hooks.setSurface, static_cast<int>(kSurfacePlate));
  FocusRefused();
  return false;
}

bool MayLoseFile(const char16_t* question) { return ConfirmedNoFirst(kUnsavedTitle, question); }

// One more try, for a stick that was drawn for a moment; then the user has to know.
bool MayLoseFiles() {
  if (!OwesShapes() && !OwesOwnFiles()) return true;
  SaveOwedShapes();
  WaitForSaves();
  if (OwesShapes()) {
    return MayLoseFile(
        u"MORVA.ini could not be written: the last change of a named plate is not in the shape "
        u"library. Close MORVA anyway?");
  }
  return !OwesOwnFiles() ||
         MayLoseFile(
             u"The own file of a named plate could not be written: behind a restart MORVA may ask "
             u"for the plate's name. Close MORVA anyway?");
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

bool MayPlateGo() {
  const int refused = RefusedValue();
  if (refused < 0) return true;
  SayOnPlate(HalfNumberWords(refused, u"; until then this plate stays up"));
  FocusRefused();
  return false;
}

bool MayCloseWithPlate() {
  const ProgramTab* tab = PlateWindowExists() ? ActiveTab() : nullptr;
  const std::u16string half = tab ? HalfNumberKept(*tab) : std::u16string();
  return half.empty() || MayLoseHalfNumber(*tab, half, u"\n\nClose this program all the same?");
}

bool MayEndWithPlates() {
  if (!PlateWindowExists()) return true;
  for (int i = 0; i < app.tabCount; ++i) {
    const std::u16string half = HalfNumberKept(tabs[i]);
    if (half.empty()) continue;
    if (!MayLoseHalfNumber(tabs[i], half, u"\n\nClose MORVA all the same?")) return false;
  }
  return MayLoseFiles();
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
  liveModels.plateSavedName = []() -> const char16_t* { return plate.savedName; };
  const int click = platform::kNotifyClick;
  RegisterCommand(RouterStage::Builder, kIdPlateNaming, kIdPlateCreate, click, OnNaming);
  RegisterCommand(RouterStage::Builder, kIdPlateReset, click, OnReset);
}

}  // namespace morva
