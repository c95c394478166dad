#include "library/units.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "app/router.h"
#include "app/stop.h"
#include "platform/control.h"

namespace morva {

namespace {

struct UnitForm {
  void (*convert)(bool metric, double factor) = nullptr;
  void (*captions)() = nullptr;
};
UnitForm forms[kMaxUnitForms];
JoinTable formFill{u"forms of the unit switch", kMaxUnitForms};

void OnUnitKey(int id, int /*notification*/) { SetUnits(id == kIdMm); }

}  // namespace

bool UnitsMetric() { return app.unitsMetric; }

void ShowUnitCaptions() {
  platform::SetText(kIdInch, app.unitsMetric ? u"INCH" : u"INCH *");
  platform::SetText(kIdMm, app.unitsMetric ? u"MM *" : u"MM");
  for (int i = 0; i < formFill.count; ++i) {
    if (forms[i].captions) forms[i].captions();
  }
}

void SetUnits(bool metric) {
  if (metric == app.unitsMetric) {
    ShowUnitCaptions();
    return;
  }
  for (int i = 0; i < formFill.count; ++i) {
    if (forms[i].convert) forms[i].convert(metric, metric ? kMmPerInch : kInchPerMm);
  }
  app.unitsMetric = metric;
  ShowUnitCaptions();
  // Its points are in display units; left alone, its inches would be read out as millimetres.
  Call(hooks.rebuildToolpath);
  ShowStatus(metric ? u"Units switched to MM (G21). Tool inputs converted."
                    : u"Units switched to INCH (G20). Tool inputs converted.");
}

void RegisterUnitForm(void (*convert)(bool metric, double factor), void (*captions)()) {
  if (!convert && !captions) {
    StopProgram(u"MORVA cannot start. A form of the unit switch has nothing to convert.");
  }
  forms[NextRow(formFill)] = {convert, captions};
}

void ResetUnits() {
  formFill.count = 0;
  app.unitsMetric = false;
}

void RegisterUnitCommands() {
  RegisterCommand(RouterStage::Simulator, kIdInch, kIdMm, 0, OnUnitKey);
}

}  // namespace morva
