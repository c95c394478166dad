#include "codetools/find_pane.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/find_rules.h"
#include "codetools/find_work.h"
#include "platform/control.h"
#include "platform/listing.h"

namespace morva {

namespace {

using platform::ControlKind;
using platform::FontRole;
using platform::Rect;

constexpr int kFindMost = kFindUnits - 1;
constexpr int kLabelHeight = 18;
constexpr int kFieldHeight = 26;
constexpr int kCheckHeight = 22;
constexpr int kKeyHeight = 28;
constexpr int kHeadHeight = 22;
constexpr int kGap = 4;
constexpr int kTightGap = 2;
// At the narrowest the pane is 296 wide: the first help takes four lines there, the other three.
constexpr int kHelpHeight = 76;
constexpr int kChangeHelpHeight = 56;
constexpr int kStatusHeight = 36;
constexpr int kListLeast = 60;
constexpr int kPromptPercent = 58;  // of the width: its words are the longer

// In the order of the screen from top to bottom, in which they are made and Tab goes.
constexpr platform::ControlSpec kControls[] = {
    {kIdFindLabel, ControlKind::Label, u"Find", u"", FontRole::Small, platform::kMainWindow, true},
    {kIdFindText, ControlKind::EditLine, u"", u"Find", FontRole::Body, platform::kMainWindow, true},
    {kIdReplaceLabel, ControlKind::Label, u"Replace with", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdReplaceText, ControlKind::EditLine, u"", u"Replace with", FontRole::Body,
     platform::kMainWindow, true},
    {kIdMatchCase, ControlKind::CheckBox, u"Match case", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdWholeToken, ControlKind::CheckBox, u"Whole token", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdNextMatch, ControlKind::PushButton, u"NEXT MATCH", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdRuleAdd, ControlKind::PushButton, u"ADD RULE", u"", FontRole::Small, platform::kMainWindow,
     true},
    {kIdRulesLabel, ControlKind::Label, u"Replacement rules", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdRuleRemove, ControlKind::PushButton, u"REMOVE RULE", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdRuleUndo, ControlKind::PushButton, u"UNDO", u"", FontRole::Small, platform::kMainWindow,
     true},
    {kIdRulePreview, ControlKind::PushButton, u"PREVIEW MATCHES", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdRuleApply, ControlKind::PushButton, u"APPLY RULES", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdFindStatus, ControlKind::Label, u"", u"Find status", FontRole::Small, platform::kMainWindow,
     true},
    {kIdFindHelp, ControlKind::Label,
     u"Queue multiple replacements, preview the count, then apply in one undoable edit. Rules "
     u"match the original code without cascading. Operation tags are protected.",
     u"", FontRole::Small, platform::kMainWindow, true},
    {kIdChangeHead, ControlKind::Label, u"Change All", u"", FontRole::Emphasis,
     platform::kMainWindow, true},
    {kIdChangeHelp, ControlKind::Label,
     u"Find exact code/text across the active project tab. START prompts at every match; DO ALL "
     u"performs one confirmed bulk change.",
     u"", FontRole::Small, platform::kMainWindow, true},
    {kIdPromptEach, ControlKind::PushButton, u"START - PROMPT EACH", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdDoAll, ControlKind::PushButton, u"DO ALL", u"", FontRole::Small, platform::kMainWindow,
     true},
};

void MakeRuleList() {
  platform::ListSpec list;
  list.id = kIdRuleList;
  list.accessibleName = u"Replacement rules";
  list.font = FontRole::Small;
  list.ownerDrawn = false;
  list.hidden = true;
  platform::MakeList(list);
}

void MakePane() {
  for (const platform::ControlSpec& spec : kControls) {
    platform::MakeControl(spec);
    if (spec.id == kIdRulesLabel) MakeRuleList();
    if (spec.kind == ControlKind::Label) {
      const bool head = spec.id == kIdChangeHead || spec.id == kIdRulesLabel;
      platform::SetColours(spec.id, {head ? kBrightAccent : kMainText, kPanelBackground, true});
    }
    if (spec.kind == ControlKind::EditLine) {
      platform::SetColours(spec.id, {kMainText, kOutputBackground, false});
      platform::SetTextLimit(spec.id, kFindMost);
    }
    if (spec.kind == ControlKind::CheckBox) {
      platform::SetColours(spec.id, {kMainText, kPanelBackground, true});
    }
  }
}

// Places things from the top down, a row at a time.
struct Column {
  int left;
  int right;
  int top;
  int gap;  // between rows
};

void PutRow(Column& column, int id, int height) {
  ShowAt(id, {column.left, column.top, column.right, column.top + height});
  column.top += height + column.gap;
}

// A label stands close to what it names.
void PutLabel(Column& column, int id) {
  ShowAt(id, {column.left, column.top, column.right, column.top + kLabelHeight});
  column.top += kLabelHeight + kTightGap;
}

void PutPair(Column& column, int first, int second, int height, int percent = 50) {
  const int middle = column.left + (column.right - column.left) * percent / 100;
  ShowAt(first, {column.left, column.top, middle - kGap / 2, column.top + height});
  ShowAt(second, {middle + kGap / 2, column.top, column.right, column.top + height});
  column.top += height + column.gap;
}

// All rows but the list, with `gap` between them.
int HeightOfRows(int gap) {
  const int above = 3 * (kLabelHeight + kTightGap) + 2 * kFieldHeight + kCheckHeight + kKeyHeight;
  const int below = 3 * kKeyHeight + kStatusHeight + kHelpHeight + kHeadHeight + kChangeHelpHeight;
  return above + below + 11 * gap;
}

void PlacePane(const Rect& area) {
  // Two rows of tabs take their height from the pane; the rows then stand closer.
  const int height = area.bottom - area.top;
  const int gap = height - HeightOfRows(kGap) >= kListLeast ? kGap : kTightGap;
  Column column{area.left, area.right, area.top, gap};
  PutLabel(column, kIdFindLabel);
  PutRow(column, kIdFindText, kFieldHeight);
  PutLabel(column, kIdReplaceLabel);
  PutRow(column, kIdReplaceText, kFieldHeight);
  PutPair(column, kIdMatchCase, kIdWholeToken, kCheckHeight);
  PutPair(column, kIdNextMatch, kIdRuleAdd, kKeyHeight);
  PutLabel(column, kIdRulesLabel);
  PutRow(column, kIdRuleList, std::max(height - HeightOfRows(gap), kListLeast));
  PutPair(column, kIdRuleRemove, kIdRuleUndo, kKeyHeight);
  PutPair(column, kIdRulePreview, kIdRuleApply, kKeyHeight);
  PutRow(column, kIdFindStatus, kStatusHeight);
  PutRow(column, kIdFindHelp, kHelpHeight);
  PutRow(column, kIdChangeHead, kHeadHeight);
  PutRow(column, kIdChangeHelp, kChangeHelpHeight);
  PutPair(column, kIdPromptEach, kIdDoAll, kKeyHeight, kPromptPercent);
}

void HidePane() {
  for (const platform::ControlSpec& spec : kControls) platform::SetVisible(spec.id, false);
  platform::SetVisible(kIdRuleList, false);
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

void OnPreview(int, int) { ApplyRules(false); }
void OnApply(int, int) { ApplyRules(true); }
void OnNext(int, int) { NextMatch(); }
void OnPrompt(int, int) { PromptEach(); }
void OnAll(int, int) { DoAll(); }

void OnUndo(int, int) { UndoInCode(); }

// Enter in the Find field is the next match.
bool FindFieldKey(const platform::KeyEvent& key) {
  if (key.key != platform::kKeyEnter || key.ctrl || key.alt) return false;
  NextMatch();
  return true;
}

}  // namespace

void RegisterFindPane() {
  Panel panel;
  panel.spot = PanelSpot::RightBody;
  panel.mode = kModeFind;
  panel.make = MakePane;
  panel.place = PlacePane;
  panel.hide = HidePane;
  panel.enter = EnterPane;
  RegisterPanel(panel);
  Handlers field;
  field.id = kIdFindText;
  field.key = FindFieldKey;
  RegisterHandlers(field);
  using platform::kNotifyClick;
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
}

}  // namespace morva
