// The main window's controls: one table a kind, made once in the order of the screen.
#include <span>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/wells.h"
#include "documents/feature_operations.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/keys.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "shell/theme.h"

namespace morva {

using platform::ControlKind;
using platform::FontRole;

namespace {

constexpr int kModeRowHeight = 24;
constexpr int kFeatureRowHeight = 24;

// No form: these stand all over the window, where its layout puts them.
constexpr platform::ControlSpec kTexts[] = {
    {kIdDncState, ControlKind::Label, u"", u"", FontRole::Small},
    {kIdDncPort, ControlKind::Label, u"", u"", FontRole::Small},
    {kIdDncBaud, ControlKind::Label, u"", u"", FontRole::Small},
    {kIdPanelHead, ControlKind::Label, u"PROGRAM", u"", FontRole::Emphasis},
    {kIdFeatureName, ControlKind::EditLine, u"", u"Feature name", FontRole::Body},
    {kIdFeatureHint, ControlKind::Label, kFeaturesWords, u"", FontRole::Small},
    {kIdOutputHead, ControlKind::Label, u"OUTPUT / VALIDATION", u"", FontRole::Emphasis},
    {kIdOutputLog, ControlKind::Log,
     u"Ready. Press F5 to validate the active program. Verify unfamiliar programs in Haas Graphics "
     u"mode before machining.\r\n",
     u"Output and validation", FontRole::Small},
    {kIdInfoPanel, ControlKind::Log, u"", u"Program information", FontRole::Small},
    {kIdHelpText, ControlKind::Log, u"", u"Quick workflow", FontRole::Small},
    {kIdOutputHelp, ControlKind::Label, u"", u"", FontRole::Small, platform::kMainWindow, true},
    {kIdStatusLine, ControlKind::Label, kReadyWords, u"", FontRole::Small},
    {kIdCaretPlace, ControlKind::Label, u"", u"", FontRole::Small},
};

struct TextColours {
  int id;
  platform::ControlColours colours;
};
constexpr TextColours kColours[] = {
    {kIdDncState, {kDimText, kPanelBackground, true}},
    {kIdDncPort, {kBrightAccent, kPanelBackground, true}},
    {kIdDncBaud, {kBrightAccent, kPanelBackground, true}},
    {kIdPanelHead, {kBrightAccent, kPanelBackground, true}},
    {kIdOutputHead, {kBrightAccent, kPanelBackground, true}},
    {kIdFeatureName, kWellColours},
    {kIdFeatureHint, {kMainText, kWindowBackground, true}},
    {kIdOutputLog, kWellColours},
    {kIdOutputHelp, kWellColours},
    {kIdInfoPanel, kWellColours},
    {kIdHelpText, kWellColours},
    {kIdStatusLine, {kMainText, kWindowBackground, true}},
    {kIdCaretPlace, {kDimText, kWindowBackground, true}},
    {kIdModeList, {kMainText, kInputBackground, false}},
    {kIdFeatureList, {kMainText, kInputBackground, false}},
};

constexpr platform::ViewSpec kViews[] = {
    {kViewGutter, u"CodeGutter", u"Line numbers", kPanelBackground, false},
    {kViewToolpath, u"HaasSimView", u"Toolpath", kPanelBackground, true},
    {kIdSpeedSlider, u"MorvaSpeed", u"Simulation speed", kWindowBackground, true,
     platform::kMainWindow, platform::ViewRole::Slider},
    {kViewTransfer, u"MorvaTransfer", u"Transfer", kInputBackground, false, platform::kMainWindow,
     platform::ViewRole::Progress},
};

// Standing text, the line numbers and the bar of a transfer take no keyboard.
bool TakesKeyboard(int id) {
  for (const platform::ControlSpec& spec : kTexts) {
    if (spec.id == id) return spec.kind != ControlKind::Label;
  }
  return id != kViewGutter && id != kViewTransfer;
}

void MakeKeys() {
  for (const KeyLook& key : Keys()) {
    for (int id = key.id; id <= LastOf(key); ++id) {
      MakeCommandKey(id, platform::kMainWindow, key.font, false);
      ShowWords(id, IsOn(id));
    }
  }
}

void MakeLists() {
  platform::ListSpec modes;
  modes.id = kIdModeList;
  modes.accessibleName = u"Workspaces and panels";
  modes.rowHeight = kModeRowHeight;
  platform::MakeList(modes);
  for (int n = 0; const ModeRow* row = ListedMode(n); ++n) {
    const int added = platform::AddRow(kIdModeList, row->words, row->mode);
    platform::SetRowDim(kIdModeList, added, !ModeExists(row->mode));
  }
  platform::ListSpec rows;
  rows.id = kIdFeatureList;
  rows.accessibleName = u"Program features";
  rows.rowHeight = kFeatureRowHeight;
  platform::MakeList(rows);
}

void MakeCodeEditor() {
  platform::EditorSpec editor;
  editor.id = kIdEditor;
  editor.accessibleName = u"Program code";
  editor.text = kEditorText;
  editor.background = kOutputBackground;
  editor.caretLine = kCaretLineBand;
  platform::MakeEditor(editor);
}

}  // namespace

void MakeMainControls() {
  MakeLists();
  MakeKeys();
  for (const platform::ControlSpec& spec : kTexts) platform::MakeControl(spec);
  MakeCodeEditor();
  for (const platform::ViewSpec& spec : kViews) platform::MakeView(spec);
  for (const TextColours& row : kColours) platform::SetColours(row.id, row.colours);
  platform::SetTextLimit(kIdFeatureName, kGivenNameUnits);
  if (IsPending(kIdFeatureRename)) platform::SetEnabled(kIdFeatureName, false);
  for (int i = 0; i < PanelCount(); ++i) Call(PanelAt(i).make);
}

void OrderTabs(const LayoutPlan& plan) {
  int stops[kMaxTabStops];
  int count = 0;
  const auto put = [&](int id) {
    if (count >= kMaxTabStops) StopFull(u"tab stops", kMaxTabStops);
    stops[count++] = id;
  };
  const auto join = [&](PanelSpot spot) {
    for (int i = 0; i < PanelCount(); ++i) {
      const Panel& panel = PanelAt(i);
      if (panel.spot == spot) count += Call(panel.tabStops, stops + count, kMaxTabStops - count);
    }
  };
  for (const Placement& placement : std::span(plan.placements, plan.count)) {
    if (TakesKeyboard(placement.id)) put(placement.id);
    if (placement.id == kIdFeatureList) put(kIdInlineName);
    if (placement.id == kIdOutputHead) join(PanelSpot::OutputHead);
    if (placement.id == kIdFeatureRename) join(PanelSpot::LeftLower);
    if (placement.id == kIdEditor) join(PanelSpot::Editor);
  }
  platform::SetTabOrder(stops, count);
}

}  // namespace morva
