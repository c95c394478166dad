#include "skim/tools/skim_fields.h"

#include <string>

#include "app/command_ids.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "platform/window.h"
#include "skim/model/plan_check.h"
#include "text/codetext.h"
#include "text/strict_number.h"

namespace morva {

namespace {

// As the fields of the plan read: size and units.
constexpr StrictRule kPlaceRule{.below = 100000, .units = 62, .blanksBehind = true};
constexpr std::int64_t kNoTool = -1;

void (*showField)(int field) = nullptr;

SkimTexts ShownTexts() {
  SkimTexts texts;
  for (int i = 0; i < kSkimFields; ++i) texts.fields[i] = platform::TextOf(kIdSkimField + i);
  texts.strategy = platform::SelectedRow(kIdSkimStrategies);
  texts.depthRow = platform::SelectedRow(kIdSkimDepths);
  return texts;
}

// A field shows 4 decimals. What nobody typed over keeps the others, so that a unit that goes to
// and fro loses nothing.
void KeepHiddenDecimals(const SkimTexts& texts, SkimPlan& plan) {
  for (int i = 0; i < kSkimFields; ++i) {
    if (SkimRow(i).whole) continue;
    if (texts.fields[i] == SkimText(skimPlan, i)) SetSkimValue(plan, i, SkimValue(skimPlan, i));
  }
}

void TellRefusal(const SkimRefusal& refusal) {
  if (refusal.words[0]) {
    platform::ShowBox(SkimRow(refusal.field).label, refusal.words, platform::BoxButtons::Ok,
                      platform::BoxIcon::Warning);
  }
  if (showField) showField(refusal.field);
}

void ShowNumber(int id, double value) {
  const std::u16string text = FixedText(value, kSkimDecimals);
  // The field that the user types in keeps its text and caret.
  if (platform::FocusedId() != id) platform::SetText(id, text);
}

void ShowField(int field) { platform::SetText(kIdSkimField + field, SkimText(skimPlan, field)); }

}  // namespace

void FillSkimForm() {
  if (!platform::Exists(kIdSkimField)) return;
  for (int i = 0; i < kSkimFields; ++i) ShowField(i);
  ShowSkimChoices();
  ShowSkimPlace();
}

void FillSkimPlace() {
  for (const int field : {kSkimXMin, kSkimYMin, kSkimXMax, kSkimYMax, kSkimZTop}) ShowField(field);
  ShowSkimPlace();
}

void ShowSkimPlace() {
  ShowNumber(kIdSkimStartX, skimPlan.xMin);
  ShowNumber(kIdSkimStartY, skimPlan.yMin);
  ShowNumber(kIdSkimSurfaceZ, skimPlan.zTop);
  ShowNumber(kIdSkimThickness, skimPlan.stockThickness);
}

void ShowSkimChoices() {
  platform::SelectRow(kIdSkimStrategies, skimPlan.strategy);
  platform::SelectRow(kIdSkimDepths, skimPlan.useTotalDepth ? 1 : 0);
  ShowSkimTool(skimPlan.tool);
}

void FillSkimTools() {
  if (!platform::Exists(kIdSkimTools)) return;
  platform::ClearRows(kIdSkimTools);
  platform::AddRow(kIdSkimTools, u"0 \u00B7 Current machine tool", kNoTool);
  for (int i = 0; i < toolLibrary.count; ++i) {
    platform::AddRow(kIdSkimTools, ToolRowText(toolLibrary.tools[i], UnitsMetric()), i);
  }
  ShowSkimTool(skimPlan.tool);
}

void ShowSkimTool(double number) {
  int row = number == 0 ? 0 : -1;
  for (int i = 0; i < toolLibrary.count && row < 0; ++i) {
    if (toolLibrary.tools[i].number == number) row = i + 1;
  }
  platform::SelectRow(kIdSkimTools, row);
}

bool ReadSkimForm(bool quiet) {
  const SkimTexts texts = ShownTexts();
  SkimPlan plan = skimPlan;
  SkimRefusal refusal;
  if (!ReadSkimFields(texts, plan, refusal)) {
    if (!quiet) TellRefusal(refusal);
    return false;
  }
  KeepHiddenDecimals(texts, plan);
  return TakeSkimPlan(plan, quiet);
}

bool TakeSkimPlan(const SkimPlan& plan, bool quiet) {
  const SkimFault fault = FaultOfSkimPlan(plan);
  if (!fault.words[0]) {
    SetSkimPlan(plan);
    return true;
  }
  if (quiet) return false;
  platform::ShowBox(u"Check skim plan", fault.words, platform::BoxButtons::Ok,
                    platform::BoxIcon::Warning);
  if (showField) showField(fault.field);
  return false;
}

bool ReadSkimPlace(SkimPlace& place) {
  const auto read = [](int id, double& value) {
    return ReadStrict(platform::TextOf(id), kPlaceRule, value) == Misread::None;
  };
  return read(kIdSkimStartX, place.x) && read(kIdSkimStartY, place.y) &&
         read(kIdSkimSurfaceZ, place.zTop) && read(kIdSkimThickness, place.thickness) &&
         place.thickness > 0;
}

void SetSkimFieldShower(void (*show)(int field)) { showField = show; }

}  // namespace morva
