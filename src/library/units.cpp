#include "library/units.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "forms/form.h"
#include "library/tools.h"
#include "library/unit_commands.h"

namespace morva {

namespace {

void OnInch(int, int) { SetUnits(false); }
void OnMm(int, int) { SetUnits(true); }

}  // namespace

bool UnitsMetric() { return app.unitsMetric; }

void SetUnits(bool metric) {
  if (metric == app.unitsMetric) return RefreshKeyStates();
  ConvertForms(UnitsMetric, metric ? kMmPerInch : kInchPerMm);
  app.unitsMetric = metric;
  RefreshKeyStates();
  RefreshToolLists();
  // Its points are in display units; left alone, its inches would be read out as millimetres.
  Call(hooks.rebuildToolpath);
  ShowStatus(metric ? u"Units switched to MM (G21). Tool inputs converted."
                    : u"Units switched to INCH (G20). Tool inputs converted.");
}

void ResetUnits() { app.unitsMetric = false; }

void RegisterUnitCommands() {
  AddCommands(UnitCommands());
  RegisterUnitKeys(kIdInch, kIdMm);
  RegisterUnitKeys(kIdBuilderInch, kIdBuilderMm);
}

void RegisterUnitKeys(int inch, int mm) {
  RegisterCommand(RouterStage::Simulator, inch, 0, OnInch);
  RegisterCommand(RouterStage::Simulator, mm, 0, OnMm);
}

}  // namespace morva
