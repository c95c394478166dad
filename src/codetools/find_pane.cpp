#include "codetools/find_pane.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/mode_table.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/find_marks.h"
#include "codetools/find_rules.h"
#include "codetools/find_work.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/listing.h"

namespace morva {

namespace {

using platform::ControlKind;
using platform::FontRole;
using platform::Rect;

constexpr int kFindMost = kFindUnits - 1;
constexpr int kFullHeight = 510;  // pixels; a lower pane does without the words of help

enum FindPage { kFullPage, kLowPage };

// At the narrowest the pane is 296 wide: the first help takes four lines there, the other three.
// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Words, .id = kIdFindText, .label = u"Find", .enter = kIdNextMatch,
     .limit = kFindMost},
    {.kind = RowKind::Words, .id = kIdReplaceText, .label = u"Replace with", .limit = kFindMost},
    {.kind = RowKind::Checks, .keys = {kIdMatchCase, kIdWholeToken}},
    {.kind = RowKind::Keys, .keys = {kIdNextMatch, kIdRuleAdd}},
    {.kind = RowKind::List, .id = kIdRuleList, .label = u"Replacement rules", .least = 60},
    {.kind = RowKind::Keys, .keys = {kIdRuleRemove, kIdRuleUndo}},
    {.kind = RowKind::Keys, .keys = {kIdRulePreview, kIdRuleApply}},
    {.kind = RowKind::Note, .id = kIdFindStatus, .name = u"Find status", .height = 36},
    {.kind = RowKind::Note, .id = kIdFindHelp,
     .label = u"Queue multiple replacements, preview the count, then apply in one undoable edit. "
              u"Rules match the original code without cascading. Operation tags are protected.",
     .pages = PageBit(kFullPage), .height = 76},
    {.kind = RowKind::Head, .id = kIdChangeHead, .label = u"Change All",
     .pages = PageBit(kFullPage)},
    {.kind = RowKind::Note, .id = kIdChangeHelp,
     .label = u"Find exact code/text across the active project tab. START prompts at every match; "
              u"DO ALL performs one confirmed bulk change.",
     .pages = PageBit(kFullPage), .height = 56},
    // The words of the first key are the longer.
    {.kind = RowKind::Keys, .keys = {kIdPromptEach, kIdDoAll}, .shares = {58, 42}},
};
// clang-format on
constexpr FormLook kLook{.tightGap = 2, .keyHeight = 28, .headHeight = 22};
constexpr Form kFindForm{.look = &kLook, .rows = kRows, .changed = [](int) { RefreshFindMarks(); }};

void MakePane() { MakeForm(kFindForm); }
void PlacePane(const platform::Rect& area) {
  PlaceForm(kFindForm, area, platform::RectHeight(area) < kFullHeight ? kLowPage : kFullPage);
  RefreshFindMarks();
}
void HidePane() {
  HideForm(kFindForm);
  RefreshFindMarks();
}

void EnterPane() {
  platform::SetFocusTo(kIdFindText);
  platform::SelectAllText(kIdFindText);
}

void ShowRules() {
  platform::ClearRows(kIdRuleList);
  for (int i = 0; i < ruleQueue.count; ++i) {
    platform::AddRow(kIdRuleList, RuleRow(ruleQueue.rules[i]), i);
  }
}

// What the status line said belongs to the step before; a refusal must not outlive its reason.
void RulesChanged() {
  ShowRules();
  platform::SetText(kIdFindStatus, u"");
}

void OnAdd(int, int) {
  if (AddRule(FindField(), ReplaceField())) return RulesChanged();
  platform::SetText(kIdFindStatus, u"Enter nonempty Find text. Up to 24 rules can be queued.");
}

void OnRemove(int, int) {
  if (RemoveRule(platform::SelectedRow(kIdRuleList))) RulesChanged();
}

void OnCheck(int, int) { RefreshFindMarks(); }
void OnPreview(int, int) { ApplyRules(false); }
void OnApply(int, int) { ApplyRules(true); }
void OnNext(int, int) { NextMatch(); }
void OnPrompt(int, int) { PromptEach(); }
void OnAll(int, int) { DoAll(); }

void OnUndo(int, int) { UndoInCode(); }

}  // namespace

namespace {
constexpr ModeKey kModeKeys[] = {{kIdFind}, {kIdFindSecond}, {kIdOldModeFirst + 6}};
}  // namespace

const ModeRow kFindMode = {.mode = kModeFind,
                           .place = 9,
                           .words = u"Find and replace",
                           .header = u"FIND / REPLACE",
                           .icon = kIconFind,
                           .remembers = true,
                           .keys = kModeKeys};

void RegisterFindPane() {
  Panel panel;
  panel.spot = PanelSpot::RightBody;
  panel.mode = kModeFind;
  panel.row = &kFindMode;
  panel.make = MakePane;
  panel.place = PlacePane;
  panel.hide = HidePane;
  panel.enter = EnterPane;
  RegisterPanel(panel);
  RegisterForm(kFindForm);
  using platform::kNotifyClick;
  RegisterCommand(RouterStage::Builder, kIdMatchCase, kNotifyClick, OnCheck);
  RegisterCommand(RouterStage::Builder, kIdWholeToken, kNotifyClick, OnCheck);
  RegisterCommand(RouterStage::Builder, kIdRuleAdd, kNotifyClick, OnAdd);
  RegisterCommand(RouterStage::Builder, kIdRuleRemove, kNotifyClick, OnRemove);
  RegisterCommand(RouterStage::Builder, kIdRulePreview, kNotifyClick, OnPreview);
  RegisterCommand(RouterStage::Builder, kIdRuleApply, kNotifyClick, OnApply);
  RegisterCommand(RouterStage::Builder, kIdRuleUndo, kNotifyClick, OnUndo);
  RegisterCommand(RouterStage::Builder, kIdNextMatch, kNotifyClick, OnNext);
  RegisterCommand(RouterStage::Click, kIdPromptEach, kNotifyClick, OnPrompt);
  RegisterCommand(RouterStage::Click, kIdDoAll, kNotifyClick, OnAll);
}

void ResetFindPane() {
  ClearRules();
  ResetFindWork();
  ResetFindMarks();
}

}  // namespace morva
