#include "library/units.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "forms/form.h"
#include "library/unit_commands.h"

namespace morva {

namespace {

void OnUnitKey(int id, int /*notification*/) { SetUnits(id == kIdMm); }

}  // namespace

bool UnitsMetric() { return app.unitsMetric; }

void SetUnits(bool metric) {
  if (metric == app.unitsMetric) return RefreshKeyStates();
  ConvertForms(UnitsMetric, metric ? kMmPerInch : kInchPerMm);
  app.unitsMetric = metric;
  RefreshKeyStates();
  // Its points are in display units; left alone, its inches would be read out as millimetres.
  Call(hooks.rebuildToolpath);
  ShowStatus(metric ? u"Units switched to MM (G21). Tool inputs converted."
                    : u"Units switched to INCH (G20). Tool inputs converted.");
}

void ResetUnits() { app.unitsMetric = false; }

void RegisterUnitCommands() {
  AddCommands(UnitCommands());
  RegisterCommand(RouterStage::Simulator, kIdInch, kIdMm, 0, OnUnitKey);
}

}  // namespace morva
