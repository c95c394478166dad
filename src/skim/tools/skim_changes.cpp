#include "skim/tools/skim_changes.h"

#include <string>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "skim/model/plan.h"
#include "skim/model/plan_check.h"
#include "skim/tools/skim_centerline.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_placement.h"
#include "skim/tools/skim_preview.h"
#include "text/codetext.h"

namespace morva {

namespace {

void ShowField(int field, double value, int decimals) {
  platform::SetText(kIdSkimField + field, FixedText(value, decimals));
}

// Number and diameter of the tool that was chosen.
void TakeTool() {
  const int row = platform::SelectedRow(kIdSkimTools);
  if (row < 0) return;
  const auto index = static_cast<int>(platform::RowData(kIdSkimTools, row));
  const bool none = index < 0 || index >= toolLibrary.count;
  ShowField(kSkimTool, none ? 0 : toolLibrary.tools[index].number, 0);
  if (none) return;
  const double unit = skimPlan.metric ? kMmPerInch : 1;
  ShowField(kSkimDiameter, toolLibrary.tools[index].diameter * unit, kSkimDecimals);
}

// All numbers are read, also the one that the other way to tell the depth hides. Nobody could mend
// it there, so what does not read goes back to what the plan says.
void MendHiddenDepth() {
  const bool total = platform::SelectedRow(kIdSkimDepths) == 1;
  const int hidden = total ? kSkimPassCount : kSkimTotalDepth;
  SkimTexts texts = TextsOf(skimPlan);
  texts.fields[hidden] = platform::TextOf(kIdSkimField + hidden);
  SkimPlan plan = skimPlan;
  SkimRefusal refusal;
  if (ReadSkimFields(texts, plan, refusal)) return;
  platform::SetText(kIdSkimField + hidden, SkimText(skimPlan, hidden));
}

}  // namespace

void SkimChanged(int id) {
  switch (id) {
    case kIdSkimStartX:
    case kIdSkimStartY:
    case kIdSkimSurfaceZ:
    case kIdSkimThickness:
      return TakeTypedPlace();
    case kIdSkimStrategies:
      if (platform::SelectedRow(id) == kSkimCustom) return DrawSkimPath();
      return RefreshSkimPreview();
    case kIdSkimTools:
      TakeTool();
      return RefreshSkimPreview();
    case kIdSkimDepths:
      MendHiddenDepth();
      Call(hooks.layout);  // the other field comes up
      return RefreshSkimPreview();
    case kIdSkimField + kSkimTool:
      FollowSkimToolNumber();
      return RefreshSkimPreview();
    default:
      if (id >= kIdSkimField && id < kIdSkimField + kSkimFields) RefreshSkimPreview();
  }
}

}  // namespace morva
