#include "skim/panel/skim_insert.h"

#include "app/command_ids.h"
#include "documents/builder.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "skim/geometry/skim_code.h"
#include "skim/model/plan.h"
#include "skim/model/plan_record.h"
#include "skim/model/wizard_state.h"
#include "skim/panel/skim_form.h"
#include "skim/panel/skim_opening.h"
#include "skim/tools/skim_fields.h"

namespace morva {

namespace {

constexpr int kRefreshMs = 50;

// The form is read into the plan, which says itself what is wrong.
bool Check(const FormValues&, Refusal&) { return ReadSkimForm(false); }

void Write(const FormValues&, CodeWriter& out) { BuildSkimProgram(skimPlan, out); }

bool StorePlan(FeatureSettings& record) {
  StoreSkimPlan(skimPlan, record);
  return true;
}

constexpr Builder kSkimBuilder{
    .kind = kKindSkim,
    .title = u"Guided skim",
    .form = &kSkimForm,
    .insertKey = kIdSkimInsert,
    .logged = u"Guided skim inserted. Each M00 requires Cycle Start to continue.",
    .refreshMs = kRefreshMs,
    .check = Check,
    .write = Write,
    .metric = UnitsMetric,
    .takeUnit = SetUnits,
    .room = [](const FormValues&) { return SkimProgramUnits(skimPlan); },
    .storeItems = StorePlan,
    .loadItems = OpenSkimFromFeature,
    .inserted =
        [](const FormValues&, bool) {
          NoteSkimLines({.program = ActiveSerial(), .inBlock = true});
          CloseSkimAtHome();
        }};

}  // namespace

void RegisterSkimBuilder() { RegisterBuilder<kSkimBuilder>(); }

}  // namespace morva
