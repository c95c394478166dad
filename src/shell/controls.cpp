// The main window's controls: one table a kind, made once in the order of the screen.
#include <iterator>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/panels.h"
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

constexpr int kModeRowHeight = 26;
constexpr int kFeatureRowHeight = 24;
constexpr int kFeatureNameMost = 80;  // characters

constexpr platform::ControlSpec kTexts[] = {
    {kIdDncState, ControlKind::Label, u"DNC: OFFLINE", u"", FontRole::Small},
    {kIdDncPort, ControlKind::Label, u"PORT  --", u"", FontRole::Small},
    {kIdDncBaud, ControlKind::Label, u"BAUD  9600", u"", FontRole::Small},
    {kIdPanelHead, ControlKind::Label, u"PROGRAM", u"", FontRole::Emphasis},
    {kIdFeatureName, ControlKind::EditLine, u"", u"Feature name", FontRole::Body},
    {kIdFeatureHint, ControlKind::Label, u"All program features appear here.", u"",
     FontRole::Small},
    {kIdOutputHead, ControlKind::Label, u"OUTPUT / VALIDATION", u"", FontRole::Small},
    {kIdOutputLog, ControlKind::Log,
     u"Ready. Press F5 to validate the active program. Verify unfamiliar programs in Haas Graphics "
     u"mode before machining.\r\n",
     u"Output and validation", FontRole::Small},
    {kIdInfoPanel, ControlKind::Log, u"", u"Program information", FontRole::Small},
    {kIdHelpText, ControlKind::Log, u"", u"Quick workflow", FontRole::Small},
    {kIdStatusLine, ControlKind::Label, u"Ready  \u2022  F5 Validate", u"", FontRole::Small},
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
    {kIdFeatureName, {kMainText, kOutputBackground, false}},
    {kIdFeatureHint, {kMainText, kWindowBackground, true}},
    {kIdOutputLog, {kMainText, kOutputBackground, false}},
    {kIdInfoPanel, {kMainText, kOutputBackground, false}},
    {kIdHelpText, {kMainText, kOutputBackground, false}},
    {kIdStatusLine, {kMainText, kWindowBackground, true}},
    {kIdModeList, {kMainText, kInputBackground, false}},
    {kIdFeatureList, {kMainText, kInputBackground, false}},
};

constexpr platform::ViewSpec kViews[] = {
    {kViewGutter, u"CodeGutter", u"Line numbers", kPanelBackground, false},
    {kViewToolpath, u"HaasSimView", u"Toolpath", kPanelBackground, true},
    {kIdSpeedSlider, u"MorvaSpeed", u"Simulation speed", kWindowBackground, true},
};

// As the eye goes: bar, left panel, tabs, editor, view, output.
constexpr int kOrder[] = {
    kIdNew,           kIdOpen,
    kIdSaveMenu,      kIdFind,
    kIdSend,          kIdReceive,
    kIdSetup,         kIdMachine,
    kIdInch,          kIdMm,
    kIdBack,          kIdSurfaceCode,
    kIdSurfaceCad,    kIdSurfacePlate,
    kIdRewind,        kIdFastForward,
    kIdDimensions,    kIdMeasure,
    kIdPan,           kIdFit,
    kIdPath,          kIdPlay,
    kIdViewMenu,      kIdZoomOut,
    kIdZoomIn,        kIdZoomReset,
    kIdModeList,      kIdShowFeatures,
    kIdShowIndex,     kIdFeatureList,
    kIdInlineName,    kIdFeatureEdit,
    kIdFeatureNew,    kIdFeatureInclude,
    kIdFeatureDelete, kIdFeatureLock,
    kIdFeatureHide,   kIdFeatureName,
    kIdFeatureRename, kIdIndexSearch,
    kIdIndexClear,    kIdIndexAll,
    kIdIndexG,        kIdIndexM,
    kIdIndexN,        kIdIndexMacro,
    kIdIndexText,     kIdIndexList,
    kIdIndexDetail,   kIdIndexInsertion,
    kIdIndexInsert,   kIdTabFirst,
    kIdTabFirst + 1,  kIdTabFirst + 2,
    kIdTabFirst + 3,  kIdTabFirst + 4,
    kIdTabFirst + 5,  kIdTabFirst + 6,
    kIdTabLast,       kIdTabNew,
    kIdCommandWords,  kIdCompareSecond,
    kIdClose,         kIdEditor,
    kIdWordsEditor,   kIdViewRefresh,
    kIdViewFit,       kIdViewPan,
    kIdViewExtents,   kIdViewMeasure,
    kIdViewGrid,      kIdViewGridMenu,
    kIdViewLayers,    kViewToolpath,
    kIdPlayStart,     kIdPlayPrevious,
    kIdPlayRewind,    kIdPlayToggle,
    kIdPlayForward,   kIdPlayNext,
    kIdPlayEnd,       kIdPlayStop,
    kIdSpeedSlider,   kIdPreflight,
    kIdRenumber,      kIdOutputLog,
    kIdInfoPanel,     kIdHelpText,
};
// What the other surfaces keep, from left to right.
constexpr int kBandOrder[] = {
    kIdBack,         kIdSurfaceCode,  kIdSurfaceCad,   kIdSurfacePlate,
    kIdNew,          kIdOpen,         kIdSaveMenu,     kIdTabFirst,
    kIdTabFirst + 1, kIdTabFirst + 2, kIdTabFirst + 3, kIdTabFirst + 4,
    kIdTabFirst + 5, kIdTabFirst + 6, kIdTabLast,      kIdTabNew,
};

void MakeKeys() {
  int count = 0;
  const KeyLook* keys = Keys(count);
  for (int i = 0; i < count; ++i) {
    const int id = keys[i].id;
    MakeCommandKey(id, platform::kMainWindow, keys[i].font, false);
    ShowWords(id, KeyIsOn(id));
    if (KeyHoldsState(id)) platform::SetChecked(id, false);
  }
}

void MakeLists() {
  platform::ListSpec modes;
  modes.id = kIdModeList;
  modes.accessibleName = u"Workspaces and panels";
  modes.rowHeight = kModeRowHeight;
  platform::MakeList(modes);
  for (const ModeRow& row : kModeRows) platform::AddRow(kIdModeList, row.words, row.mode);
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
  platform::SetTextLimit(kIdFeatureName, kFeatureNameMost);
  if (IsPending(kIdFeatureRename)) platform::SetEnabled(kIdFeatureName, false);
  for (int i = 0; i < PanelCount(); ++i) Call(PanelAt(i).make);
  OrderTabs(kSurfaceCode);
}

void OrderTabs(int surface) {
  platform::SetTabOrder(kOrder, static_cast<int>(std::size(kOrder)));
  if (surface == kSurfaceCode) return;
  platform::SetTabOrder(kBandOrder, static_cast<int>(std::size(kBandOrder)));
}

}  // namespace morva
