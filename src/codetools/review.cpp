#include "codetools/review.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/codetools_commands.h"
#include "codetools/review_work.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"

namespace morva {

namespace {

using platform::ControlKind;
using platform::FontRole;
using platform::Rect;

constexpr int kGap = 6;
constexpr int kKeyHeight = 30;
constexpr int kLowKeyHeight = 26;
constexpr int kLowKeyGap = 4;
constexpr int kHeadHeight = 20;
constexpr int kListRow = 22;
constexpr int kKeyLeast = 132;     // pixels for the longest caption
constexpr int kListMost = 250;     // width of the list of programs
constexpr int kSummaryShort = 38;  // two lines of the small font
constexpr int kSummaryTall = 60;
constexpr int kSideHeight = 28;
constexpr int kSideLabel = 68;

// No form: eight keys that break into rows of four or two, beside a list that grows with them, and
// two columns of a list and a pane below. The rows of a form say none of that.
constexpr int kMain = platform::kMainWindow;

// In the order of the keyboard.
constexpr int kKeyIds[] = {kIdReviewSelected, kIdReviewPrevious, kIdReviewNext,  kIdReviewSwap,
                           kIdReviewSpaces,   kIdReviewTags,     kIdReviewLines, kIdReviewBack};
struct Label {
  int id;
  const char16_t* text;
};
constexpr Label kLabels[] = {
    {kIdReviewSummary, u""},
    {kIdReviewLeftLabel, u"Baseline"},
    {kIdReviewRightLabel, u"Compared"},
};
constexpr int kOthers[] = {kIdReviewHead,  kIdReviewPrograms, kIdReviewLeft,
                           kIdReviewRight, kIdReviewLeftPane, kIdReviewRightPane};

// No form: it has editors and lists side by side, a form has its rows below each other.
void MakeSide(int id, const char16_t* name) {
  platform::ListSpec side;
  side.id = id;
  side.kind = platform::ListKind::Combo;
  side.accessibleName = name;
  side.font = FontRole::Small;
  side.ownerDrawn = false;
  side.hidden = true;
  platform::MakeList(side);
}

void MakePane(int id, const char16_t* name) {
  platform::EditorSpec pane;
  pane.id = id;
  pane.accessibleName = name;
  pane.text = kReviewText;
  pane.background = kDarkBand;
  pane.hidden = true;
  pane.readOnly = true;
  platform::MakeEditor(pane);
}

void MakeReview() {
  platform::MakeControl({kIdReviewHead, ControlKind::Label, u"PROGRAMS (Ctrl / Shift)", u"",
                         FontRole::Small, kMain, true});
  platform::SetColours(kIdReviewHead, {kMainText, kPanelBackground, true});
  platform::ListSpec programs;
  programs.id = kIdReviewPrograms;
  programs.kind = platform::ListKind::Multi;
  programs.accessibleName = u"Programs to review";
  programs.font = FontRole::Small;
  programs.rowHeight = kListRow;
  programs.ownerDrawn = false;
  programs.hidden = true;
  platform::MakeList(programs);
  for (const int id : kKeyIds) MakeCommandKey(id, kMain, FontRole::Small, true);
  for (const Label& label : kLabels) {
    const bool summary = label.id == kIdReviewSummary;
    platform::MakeControl({label.id, ControlKind::Label, label.text,
                           summary ? u"Review summary" : u"", FontRole::Small, kMain, true});
    platform::SetColours(label.id, {summary ? kMainText : kDimText, kPanelBackground, true});
  }
  MakeSide(kIdReviewLeft, u"Left program, the baseline");
  MakeSide(kIdReviewRight, u"Right program");
  MakePane(kIdReviewLeftPane, u"Left program's lines");
  MakePane(kIdReviewRightPane, u"Right program's lines");
}

// The eight keys in rows of four, or lower ones in rows of two where four do not fit. The y
// below them.
int PlaceKeys(int left, int right, int top) {
  const bool four = (right - left - 3 * kGap) / 4 >= kKeyLeast;
  const int inRow = four ? 4 : 2;
  const int height = four ? kKeyHeight : kLowKeyHeight;
  const int gap = four ? kGap : kLowKeyGap;
  const int width = right - left + kGap;
  for (int i = 0; i < 8; ++i) {
    const int column = i % inRow;
    const int y = top + i / inRow * (height + gap);
    ShowAt(kKeyIds[i], {left + width * column / inRow, y,
                        left + width * (column + 1) / inRow - kGap, y + height});
  }
  return top + 8 / inRow * (height + gap);
}

void PlaceSide(const Rect& column, int label, int list, int pane) {
  const int foot = column.top + kSideHeight;
  ShowAt(label, {column.left, column.top, column.left + kSideLabel, foot});
  ShowAt(list, {column.left + kSideLabel, column.top, column.right, foot});
  ShowAt(pane, {column.left, foot + kGap, column.right, column.bottom});
}

void PlaceReview(const Rect& area) {
  const int list = std::min(kListMost, platform::RectWidth(area) * 2 / 7);
  const int keys = area.left + list + 2 * kGap;
  const int below = PlaceKeys(keys, area.right, area.top);
  const bool narrow = (area.right - keys - 3 * kGap) / 4 < kKeyLeast;
  const int foot = below + (narrow ? kSummaryTall : kSummaryShort);
  ShowAt(kIdReviewHead, {area.left, area.top, area.left + list, area.top + kHeadHeight});
  ShowAt(kIdReviewPrograms, {area.left, area.top + kHeadHeight + 2, area.left + list, foot});
  ShowAt(kIdReviewSummary, {keys, below + 2, area.right, foot});
  const int middle = (area.left + area.right) / 2;
  const int top = foot + kGap;
  PlaceSide({area.left, top, middle - kGap / 2, area.bottom}, kIdReviewLeftLabel, kIdReviewLeft,
            kIdReviewLeftPane);
  PlaceSide({middle + kGap / 2, top, area.right, area.bottom}, kIdReviewRightLabel, kIdReviewRight,
            kIdReviewRightPane);
}

void HideReview() {
  for (const int id : kKeyIds) platform::SetVisible(id, false);
  for (const Label& label : kLabels) platform::SetVisible(label.id, false);
  for (const int id : kOthers) platform::SetVisible(id, false);
}

bool ReviewShown() { return app.compareActive && app.surface == kSurfaceCode; }

void PressCompare(int, int) {
  if (app.compareActive) {
    ReviewExit();
  } else {
    ReviewEnter();
  }
}

void PressKey(int id, int) {
  switch (id) {
    case kIdReviewSelected:
      return ReviewFillSelection();
    case kIdReviewPrevious:
      return ReviewStep(-1);
    case kIdReviewNext:
      return ReviewStep(1);
    case kIdReviewSwap:
      return ReviewSwap();
    case kIdReviewSpaces:
      return ReviewToggle(&CompareOptions::ignoreSpaces);
    case kIdReviewTags:
      return ReviewToggle(&CompareOptions::showTags);
    case kIdReviewLines:
      return ReviewToggle(&CompareOptions::changesOnly);
    default:
      return ReviewExit();
  }
}

// Escape is the way back from every control of the review.
bool LeaveKey(const platform::KeyEvent& key) {
  return app.compareActive && RouteChord(kReviewChords, key);
}

}  // namespace

void RegisterReview() {
  static constexpr int kWells[] = {kIdReviewPrograms, kIdReviewLeftPane, kIdReviewRightPane};
  Panel panel;
  panel.spot = PanelSpot::Work;
  panel.active = ReviewShown;
  panel.make = MakeReview;
  panel.place = PlaceReview;
  panel.hide = HideReview;
  panel.wells = kWells;
  RegisterPanel(panel);
  using platform::kNotifyClick;
  RegisterCommand(RouterStage::Click, kIdCompare, kNotifyClick, PressCompare);
  RegisterCommand(RouterStage::Click, kIdCompareSecond, kNotifyClick, PressCompare);
  RegisterCommand(RouterStage::Click, kIdReviewSelected, kIdReviewBack, kNotifyClick, PressKey);
  RegisterCommand(RouterStage::Notified, kIdReviewPrograms, platform::kNotifyListSelect,
                  [](int, int) { ReviewMarkTabs(); });
  RegisterCommand(RouterStage::Notified, kIdReviewPrograms, platform::kNotifyListDouble,
                  [](int, int) { ReviewFillSelection(); });
  for (const int id : {kIdReviewLeft, kIdReviewRight}) {
    RegisterCommand(RouterStage::Notified, id, platform::kNotifyComboSelect,
                    [](int, int) { ReviewCompare(); });
  }
  for (const int id : {kIdReviewLeftPane, kIdReviewRightPane}) {
    RegisterCommand(RouterStage::Notified, id, platform::kNotifyVScroll,
                    [](int, int) { ReviewLockScroll(); });
  }
  for (int id = kIdReviewPrograms; id <= kIdReviewRightPane; ++id) {
    if (id == kIdReviewSummary || id == kIdReviewLeftLabel || id == kIdReviewRightLabel) continue;
    Handlers handlers;
    handlers.id = id;
    handlers.key = LeaveKey;
    RegisterHandlers(handlers);
  }
  hooks.leaveCompare = ReviewExit;
  RegisterTimer(kTimerHover, ReviewTick);
}

void ResetReview() { ResetReviewWork(); }

}  // namespace morva
