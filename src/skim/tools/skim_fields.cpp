#include "skim/tools/skim_fields.h"

#include <string>
#include <utility>

#include "app/command_ids.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "platform/window.h"
#include "skim/model/plan_check.h"
#include "skim/model/wizard_state.h"
#include "text/codetext.h"
#include "text/length_units.h"
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

// A text in the plan's unit; one that is no number stays.
std::u16string InUnitOfPlan(const std::u16string& text, bool metric) {
  double value = 0;
  if (metric == skimPlan.metric || ReadStrict(text, kPlaceRule, value) != Misread::None)
    return text;
  return FixedText(value * (skimPlan.metric ? kMmPerInch : kInchPerMm), kSkimDecimals);
}

// A text that shows a value tells no more decimals than it shows.
bool ReadPlaceNumber(int id, double shown, double& value) {
  const std::u16string text = platform::TextOf(id);
  if (ReadStrict(text, kPlaceRule, value) != Misread::None) return false;
  if (text == FixedText(shown, kSkimDecimals)) value = shown;
  return true;
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

void ShowSkimStrategy() { platform::SelectRow(kIdSkimStrategies, skimPlan.strategy); }

void ShowSkimChoices() {
  ShowSkimStrategy();
  platform::SelectRow(kIdSkimDepths, skimPlan.useTotalDepth ? 1 : 0);
  ShowSkimTool(skimPlan.tool);
}

void KeepSkimTexts() {
  if (skimWizard.planValid) return KeepSkimTyped({});
  SkimTyped kept;
  kept.stands = true;
  kept.metric = skimPlan.metric;
  kept.texts = ShownTexts();
  for (int i = 0; i < kSkimFields; ++i) {
    kept.typed[i] = kept.texts.fields[i] != SkimText(skimPlan, i);
  }
  KeepSkimTyped(std::move(kept));
}

void PutSkimTextsBack() {
  const SkimTyped& kept = skimWizard.typed;
  if (!kept.stands) return;
  for (int i = 0; i < kSkimFields; ++i) {
    if (!kept.typed[i]) continue;
    const bool scaled = SkimRow(i).length;
    const std::u16string& text = kept.texts.fields[i];
    platform::SetText(kIdSkimField + i, scaled ? InUnitOfPlan(text, kept.metric) : text);
  }
  // The row of the drawn line led to the drawing; whether the strategy is that one the plan says.
  if (kept.texts.strategy != kSkimCustom) {
    platform::SelectRow(kIdSkimStrategies, kept.texts.strategy);
  }
  platform::SelectRow(kIdSkimDepths, kept.texts.depthRow);
  FollowSkimToolNumber();
}

void FollowSkimToolNumber() {
  double number = 0;
  const bool reads = ReadStrictNumber(platform::TextOf(kIdSkimField + kSkimTool), number);
  ShowSkimTool(reads ? number : -1);
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
  return ReadPlaceNumber(kIdSkimStartX, skimPlan.xMin, place.x) &&
         ReadPlaceNumber(kIdSkimStartY, skimPlan.yMin, place.y) &&
         ReadPlaceNumber(kIdSkimSurfaceZ, skimPlan.zTop, place.zTop) &&
         ReadPlaceNumber(kIdSkimThickness, skimPlan.stockThickness, place.thickness) &&
         place.thickness > 0;
}

void SetSkimFieldShower(void (*show)(int field)) { showField = show; }

}  // namespace morva
