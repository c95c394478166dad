#include "skim/panel/skim_insert.h"

#include "app/command_ids.h"
#include "documents/builder.h"
#include "documents/edit_link.h"
#include "documents/insertion.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "platform/message.h"
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

// The skim has no key that unlinks it: where its block may not be replaced, the user is asked
// whether it becomes a block of its own. False: it does not, and stays under edit.
bool SettleChangedBlock() {
  if (editLink.kind != kKindSkim || LinkedBlockStands()) return true;
  const platform::BoxAnswer answer = platform::ShowBox(
      u"Skim update stopped",
      u"The block of this skim was changed, removed or copied since it was opened; no update takes "
      u"its place.\r\n\r\nInsert the skim as a new block? Code that still stands there is run as "
      u"well.",
      platform::BoxButtons::NoYes, platform::BoxIcon::Warning);
  if (answer != platform::BoxAnswer::Yes) return false;
  DropEditLink();
  return true;
}

// The form is read into the plan, which says itself what is wrong.
bool Check(const FormValues&, Refusal&) { return ReadSkimForm(false) && SettleChangedBlock(); }

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
