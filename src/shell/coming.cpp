#include "shell/coming.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/mode_table.h"
#include "app/surfaces.h"

namespace morva {

namespace {

constexpr char16_t kPlate[] = u"Plate workspace";

// A row moves to the room that brings the operation, and loses its `pending` there.
constexpr Command kCommands[] = {
    {.id = kIdSurfacePlate,
     .words = u"Plate",
     .help = u"Plate builder",
     .on = IsSurfaceKeyOn,
     .pending = kPlate},
    {.id = kIdOldModeLast, .pending = kPlate},
};

constexpr KeyWidth kSurfaceKeys[] = {{kIdSurfacePlate, 64}};

constexpr ModeKey kPlateKeys[] = {{kIdOldModeFirst + 12}};
constexpr ModeKey kDncKeys[] = {
    {kIdMachine, RouterStage::FeatureSwitch}, {kIdSetup}, {kIdSetupSecond}, {kIdOpenDncSetup}};

constexpr ModeRow kModes[] = {
    {.mode = kModePlateItem,
     .place = 3,
     .words = u"Plate builder",
     .icon = kIconPlate,
     .keys = kPlateKeys},
    {.mode = kModeDnc,
     .place = 11,
     .words = u"DNC / RS-232",
     .header = u"DNC / RS-232",
     .remembers = true,
     .keys = kDncKeys},
    {.mode = kModeDiagnostics, .header = u"DIAGNOSTICS"},
};

}  // namespace

void RegisterComingModes() {
  for (ModeRow row : kModes) {
    row.coming = true;
    RegisterMode(row);
  }
}

std::span<const Command> ComingCommands() { return kCommands; }

std::span<const KeyWidth> ComingSurfaceKeys() { return kSurfaceKeys; }

}  // namespace morva
