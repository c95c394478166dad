#include "codetools/review_work.h"

#include <string>
#include <string_view>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "codetools/command_words.h"
#include "codetools/review_colours.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/timer.h"

namespace morva {

namespace {

constexpr char16_t kTooFew[] =
    u"Select two or more programs (Ctrl/Shift click), then Review selected.";
constexpr char16_t kNoSides[] =
    u"Select at least two open programs in the list, then Review selected.";
constexpr int kLinesAbove = 3;  // of the row that a step goes to

CompareOptions options;
std::int32_t shownRows[kMaxCompareRows];
std::int32_t shownCount = 0;
std::int32_t currentRow = -1;  // in shownRows
bool renderedInWords = false;
std::uint64_t comparedRevision = 0;  // of the code editor, whose program may be on a side

// The scroll lock's memory, and its guard against hearing its own scrolling.
bool following = false;

constexpr int kBoth = 2;  // sides, the baseline first
constexpr int kSides[kBoth] = {kIdReviewLeft, kIdReviewRight};
constexpr int kPanes[kBoth] = {kIdReviewLeftPane, kIdReviewRightPane};
int seenLine[kBoth] = {0, 0};

void RememberScroll() {
  for (int side = 0; side < 2; ++side) seenLine[side] = platform::FirstVisibleLine(kPanes[side]);
}

void ShowOptionWords() {
  ShowWords(kIdReviewSpaces, options.ignoreSpaces);
  ShowWords(kIdReviewTags, options.showTags);
  ShowWords(kIdReviewLines, options.changesOnly);
  for (const int id : {kIdReviewSpaces, kIdReviewTags, kIdReviewLines}) platform::Repaint(id);
}

void ClearPanes() {
  EmptyCompare();
  shownCount = 0;
  currentRow = -1;
  following = true;
  for (const int pane : kPanes) platform::SetEditorText(pane, u"");
  following = false;
  RememberScroll();
}

bool ListIsCurrent() {
  if (platform::RowCount(kIdReviewPrograms) != app.tabCount) return false;
  for (int i = 0; i < app.tabCount; ++i) {
    if (platform::RowText(kIdReviewPrograms, i) != NameOfTab(i)) return false;
  }
  return true;
}

// The open programs, those that bear a mark chosen.
void ShowPrograms() {
  if (!ListIsCurrent()) {
    platform::ClearRows(kIdReviewPrograms);
    for (int i = 0; i < app.tabCount; ++i) platform::AddRow(kIdReviewPrograms, NameOfTab(i), i);
  }
  for (int i = 0; i < app.tabCount; ++i) {
    if (platform::IsRowSelected(kIdReviewPrograms, i) != tabs[i].compareSelected) {
      platform::SetRowSelected(kIdReviewPrograms, i, tabs[i].compareSelected);
    }
  }
}

// The tab of a side, null for none.
const ProgramTab* TabOfSide(int side) {
  const int row = platform::SelectedRow(kSides[side]);
  if (row < 0) return nullptr;
  const std::int64_t tab = platform::RowData(kSides[side], row);
  return tab >= 0 && tab < app.tabCount ? &tabs[tab] : nullptr;
}

void ListShownRows() {
  shownCount = 0;
  for (std::int32_t i = 0; i < compareResult.rowCount; ++i) {
    if (IsRowShown(compareResult.rows[i], options)) shownRows[shownCount++] = i;
  }
}

// What a pane shows: code, or its words. Without memory it stays empty.
OwnedText PaneText(int side, std::u16string_view program) {
  OwnedText code = ComparePaneText(program, side == 0, options);
  return renderedInWords ? CodeToShownWords(code.View()) : std::move(code);
}

void FillPane(int side, std::u16string_view text, std::u16string_view beside) {
  platform::HoldEditorRedraw(kPanes[side], true);
  platform::SetEditorText(kPanes[side], text);
  ColourReviewPane(
      kPanes[side], text,
      {shownRows, shownCount, side == 0, renderedInWords, options.ignoreSpaces, beside});
  platform::HoldEditorRedraw(kPanes[side], false);
}

// The code behind the review changed, by a key or by the markers of a pause: what is looked at
// must be what a send would take.
void FollowCode() {
  const std::uint64_t revision = platform::EditorRevision(kIdEditor);
  if (revision == comparedRevision) return;
  comparedRevision = revision;
  const ProgramTab* active = ActiveTab();
  if (!active || (TabOfSide(0) != active && TabOfSide(1) != active)) return;
  SyncActiveTab();
  const int top = platform::FirstVisibleLine(kPanes[0]);
  ReviewCompare();
  following = true;
  for (const int pane : kPanes) platform::ScrollToLine(pane, top);
  following = false;
  RememberScroll();
}

// What was to be done next is done.
void DropMarkedWords() {
  if (app.statusText == std::u16string_view(kCompareMarkedWords)) ShowStanding();
}

// Of a long line what changed comes into view, where its start shows nothing of it.
void ShowChange(int pane, int beside, int row, int start) {
  const ChangedStretch change =
      FirstChange(platform::EditorLineText(pane, row), platform::EditorLineText(beside, row),
                  options.ignoreSpaces);
  platform::ScrollSideways(pane, {start + change.from, start + change.to});
}

}  // namespace

void ReviewEnter() {
  if (app.compareActive || !platform::Exists(kIdReviewPrograms)) return;
  if (app.surface != kSurfaceCode) Call(hooks.setSurface, static_cast<int>(kSurfaceCode));
  SyncActiveTab();
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  Call(hooks.hideCompletion);
  app.compareActive = true;
  DropMarkedWords();
  ShowWords(kIdCompareSecond, true);
  ShowOptionWords();
  ShowPrograms();
  RelayPanels();
  ReviewFillSelection();
  platform::SetFocusTo(kIdReviewPrograms);
}

void ReviewExit() {
  if (!app.compareActive) return;
  const int focused = platform::FocusedId();
  app.compareActive = false;
  DropMarkedWords();
  ShowWords(kIdCompareSecond, false);
  ClearPanes();
  for (const int side : kSides) platform::ClearRows(side);
  RelayPanels();
  // The keyboard stays where it is, unless that is hidden now.
  if (focused < kIdReviewHead || focused > kIdReviewRightPane) return;
  if (!FocusPanelAt(PanelSpot::Work)) platform::SetFocusTo(ShownEditor());
}

void ReviewMarkTabs() {
  if (!app.compareActive) return;
  const int rows = platform::RowCount(kIdReviewPrograms);
  for (int i = 0; i < rows && i < app.tabCount; ++i) {
    SelectForCompare(i, platform::IsRowSelected(kIdReviewPrograms, i));
  }
  RefreshTabButtons();
}

void ReviewFillSelection() {
  if (!app.compareActive) return;
  for (const int side : kSides) platform::ClearRows(side);
  int chosen = 0;
  const int rows = platform::RowCount(kIdReviewPrograms);
  for (int i = 0; i < rows; ++i) {
    if (!platform::IsRowSelected(kIdReviewPrograms, i)) continue;
    const std::u16string title = platform::RowText(kIdReviewPrograms, i);
    const std::int64_t tab = platform::RowData(kIdReviewPrograms, i);
    for (const int side : kSides) platform::AddRow(side, title, tab);
    ++chosen;
  }
  if (chosen < 2) {
    ClearPanes();
    platform::SetText(kIdReviewSummary, kTooFew);
    return;
  }
  platform::SelectRow(kIdReviewLeft, 0);
  platform::SelectRow(kIdReviewRight, 1);
  ReviewCompare();
}

void ReviewCompare() {
  if (!app.compareActive) return;
  const ProgramTab* left = TabOfSide(0);
  const ProgramTab* right = TabOfSide(1);
  if (!left || !right) {
    platform::SetText(kIdReviewSummary, kNoSides);
    return;
  }
  comparedRevision = platform::EditorRevision(kIdEditor);
  CompareTexts(left->text, right->text, options);
  ReviewRender();
}

void ReviewRender() {
  const ProgramTab* left = TabOfSide(0);
  const ProgramTab* right = TabOfSide(1);
  if (!left || !right) return;
  ListShownRows();
  renderedInWords = app.commandWordsActive;
  following = true;
  const OwnedText texts[kBoth] = {PaneText(0, left->text), PaneText(1, right->text)};
  for (int side = 0; side < kBoth; ++side) {
    FillPane(side, texts[side].View(), texts[1 - side].View());
  }
  following = false;
  platform::SetText(kIdReviewSummary, CompareSummary());
  currentRow = -1;
  RememberScroll();
  ShowOptionWords();
}

void ReviewSwap() {
  const int left = platform::SelectedRow(kIdReviewLeft);
  platform::SelectRow(kIdReviewLeft, platform::SelectedRow(kIdReviewRight));
  platform::SelectRow(kIdReviewRight, left);
  ReviewCompare();
}

void ReviewToggle(bool CompareOptions::*option) {
  options.*option = !(options.*option);
  ShowOptionWords();
  ReviewCompare();
}

void ReviewStep(int direction) {
  std::int32_t row = currentRow;
  if (row < 0) row = direction > 0 ? shownCount - 1 : 0;
  for (std::int32_t i = 0; i < shownCount; ++i) {
    row = (row + direction + shownCount) % shownCount;
    if (compareResult.rows[shownRows[row]].type == kRowSame) continue;
    currentRow = row;
    following = true;
    const bool modified = compareResult.rows[shownRows[row]].type == kRowModified;
    for (const int pane : kPanes) {
      const int start = platform::EditorLineStart(pane, row);
      // From its end to its start, which then stays in sight however long the line is.
      platform::SetEditorSelection(pane, {start + platform::EditorLineLength(pane, row), start});
      platform::ScrollToLine(pane, row > kLinesAbove ? row - kLinesAbove : 0);
      if (modified) ShowChange(pane, pane == kPanes[0] ? kPanes[1] : kPanes[0], row, start);
    }
    following = false;
    RememberScroll();
    return;
  }
}

// Both panes have a row for a row, so the same difference is the same line.
void ReviewLockScroll() {
  if (following || !app.compareActive) return;
  following = true;
  for (int side = 0; side < 2; ++side) {
    const int line = platform::FirstVisibleLine(kPanes[side]);
    if (line == seenLine[side]) continue;
    platform::ScrollToLine(kPanes[1 - side], line);
    break;
  }
  following = false;
  RememberScroll();
}

void ReviewTick() {
  if (!app.compareActive) return;
  ShowPrograms();
  if (TabOfSide(0) && TabOfSide(1)) {
    FollowCode();
    if (renderedInWords != app.commandWordsActive) ReviewCompare();
  }
  ReviewLockScroll();
}

void ResetReviewWork() {
  options = CompareOptions();
  EmptyCompare();
  shownCount = 0;
  currentRow = -1;
  renderedInWords = false;
  comparedRevision = 0;
  seenLine[0] = seenLine[1] = 0;
  following = false;
}

}  // namespace morva
