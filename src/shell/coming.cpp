#include "shell/coming.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/mode_table.h"

namespace morva {

namespace {

constexpr ModeKey kDncKeys[] = {
    {kIdMachine, RouterStage::FeatureSwitch}, {kIdSetup}, {kIdSetupSecond}, {kIdOpenDncSetup}};

constexpr ModeRow kModes[] = {
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

}  // namespace morva
