#include "shell/layout_rects.h"

#include <algorithm>
#include <iterator>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/join_table.h"
#include "app/limits.h"

namespace morva {

using platform::Rect;

namespace {

constexpr int kPad = 8;     // window edge to content, panel edge to content
constexpr int kKeyGap = 5;  // between keys of one row
constexpr int kTopBand = 70;
constexpr int kWorkspaceBand = 72;       // while another surface is up
constexpr int kWorkspaceKeysLeft = 346;  // behind their head
constexpr int kTopKeysLeft = 240;
constexpr int kTopKeysTop = 10;
constexpr int kBarKeyHeight = 34;
constexpr int kTransferTop = 46;  // below the keys of the top band
constexpr int kTransferHeight = 22;
constexpr int kTransferLeft = 846;  // behind the port that is named by a path of 31 characters
constexpr int kTransferBarMost = 360;
constexpr int kAbortWidth = 76;
constexpr int kStatusHeight = 28;
constexpr int kCaretPlaceWidth = 250;  // behind the status line: seven digits each, and a selection
constexpr int kTabHeight = 30;
constexpr int kTabLeast = 112;  // narrower tabs wrap into a second row
constexpr int kTabMost = 190;
constexpr int kGutterWidth = 52;
constexpr int kEditorLeast = 420;
constexpr int kEditorBesidePath = 280;  // while the view has its three fifths
constexpr int kLeastPanelSpace = 760;   // what the left panel leaves for the rest
constexpr int kSmallKey = 28;           // height of keys inside panels
constexpr int kHeadRow = 26;
constexpr int kHeadWords = 190;        // of the output's head, beside a panel
constexpr int kHeadWordsLeast = 170;   // that they need at least
constexpr int kHeadLine = 24;          // height of these words in a line of their own
constexpr int kHeadPanelLeast = 230;   // width of a panel left of the keys
constexpr int kUsualHeight = 800;      // the least of a window whose screen has room for it
constexpr int kOutputLeast = 150;      // height of the output
constexpr int kOutputBelowView = 112;  // where the view stands above it
constexpr int kHelpHeight = 112;       // of the help text below a right panel,
constexpr int kHelpLeast = 64;         // or it is not shown
constexpr int kBodyBeforeHelp = 400;   // that a right panel keeps before its help gets any
constexpr int kPanelTop = 42;          // of a right panel, for its head
constexpr int kStripKeyWidth = 26;     // of the key that closes the strip
constexpr int kBesideStrip = 160;      // height of the editor that a tall strip leaves
constexpr int kPanelAboveStrip = 300;  // height of a panel in the work area that it leaves
constexpr int kAboveStrip = 7;         // between the editor and the head of the output
constexpr int kBelowHead = 5;
constexpr int kWorkflowLeast = 180;     // height that the quick workflow's words need
constexpr int kOutputWidthLeast = 330;  // of the output beside the quick workflow

void Put(LayoutPlan& plan, int id, const Rect& place) {
  if (plan.count >= kMaxPlacements) StopFull(u"controls placed", kMaxPlacements);
  plan.placements[plan.count++] = Placement{id, IsEmpty(place) ? Rect{} : place};
}

// A row of keys to the right from `x`; the x behind the last gap.
int PutRow(LayoutPlan& plan, int x, int y, int height, const KeyWidth* keys, int count, int gap) {
  for (int i = 0; i < count; ++i) {
    Put(plan, keys[i].id, Rect{x, y, x + keys[i].width, y + height});
    x += keys[i].width + gap;
  }
  return x;
}

constexpr KeyWidth kTopKeys[] = {{kIdNew, 64},   {kIdOpen, 72},    {kIdSaveMenu, 82},
                                 {kIdFind, 64},  {kIdSend, 86},    {kIdReceive, 98},
                                 {kIdSetup, 72}, {kIdMachine, 186}};
constexpr KeyWidth kUnitKeys[] = {{kIdInch, 66}, {kIdMm, 60}};
constexpr KeyWidth kToolKeys[] = {{kIdRewind, 36},  {kIdFastForward, 36}, {kIdDimensions, 36},
                                  {kIdMeasure, 36}, {kIdPan, 36},         {kIdFit, 36}};
constexpr KeyWidth kPathKeys[] = {{kIdPath, 61},    {kIdPlay, 70},   {kIdViewMenu, 60},
                                  {kIdZoomOut, 34}, {kIdZoomIn, 34}, {kIdZoomReset, 70}};
constexpr KeyWidth kTabBarKeys[] = {{kIdCommandWords, 132}, {kIdCompareSecond, 96}, {kIdClose, 64}};

// The keys above and below the toolpath view. The narrow bars stand in the lower part of a right
// panel and beside a form: smaller keys, and of the playback keys only six.
struct ViewBars {
  int keyWidth;  // at most
  int keyHeight;
  int gap;          // between keys of a row
  int left;         // of the keys above, from the view's edge; less where they would not fit
  int apart;        // between a bar and the view
  bool operations;  // with the keys to the previous and the next operation
};
constexpr ViewBars kWideBars{36, 30, 4, 118, 6, true};
constexpr ViewBars kNarrowBars{22, 24, 2, 12, 4, false};
constexpr int kSliderHeight = 26;
constexpr int kSliderGap = 5;      // above a slider of its own row
constexpr int kSliderBeside = 12;  // from the playback keys to a slider in their row
constexpr int kSliderLeast = 280;  // width of that
constexpr int kBesideLeast = 300;  // a view narrower than this goes under the editor
constexpr int kUnderLeast = 110;   // height of a view there; a lower one goes below the panel
constexpr int kUnderPercent = 58;  // of the editor's column
constexpr int kBelowLeast = 200;   // height of a view below the panel
constexpr int kFormLeast = 220;    // of the panel above it; a lower one stands without the view
constexpr int kPanelToView = 8;    // from the panel to the bar of the view below it
constexpr int kNarrowBarsHeight =  // with a slider in a row of its own
    2 * (kNarrowBars.keyHeight + kNarrowBars.apart) + kSliderGap + kSliderHeight;
constexpr int kViewKeys[] = {kIdViewRefresh, kIdViewFit,  kIdViewPan,      kIdViewExtents,
                             kIdViewMeasure, kIdViewGrid, kIdViewGridMenu, kIdViewLayers};
constexpr int kPlayKeys[] = {kIdPlayStart,   kIdPlayPrevious, kIdPlayRewind, kIdPlayToggle,
                             kIdPlayForward, kIdPlayNext,     kIdPlayEnd,    kIdPlayStop};

int RowWidth(const KeyWidth* keys, int count, int gap) {
  int width = 0;
  for (int i = 0; i < count; ++i) width += keys[i].width + (i > 0 ? gap : 0);
  return width;
}

template <int N>
int RowWidth(const KeyWidth (&keys)[N], int gap) {
  return RowWidth(keys, N, gap);
}

template <int N>
int PutRow(LayoutPlan& plan, int x, int y, int height, const KeyWidth (&keys)[N], int gap) {
  return PutRow(plan, x, y, height, keys, N, gap);
}

// The x behind the last gap.
int PutSurfaceKeys(LayoutPlan& plan, const LayoutInput& in, int x, int y) {
  const int count = static_cast<int>(in.surfaceKeys.size());
  return PutRow(plan, x, y, kBarKeyHeight, in.surfaceKeys.data(), count, kKeyGap);
}

// The bar of a transfer and the key that aborts it, at the right end of the top band. Both are
// planned at rest too, without a place, so that Tab knows them.
void PutTransfer(LayoutPlan& plan, const LayoutInput& in, int left, int top) {
  if (!in.transferRuns) {
    Put(plan, kIdAbortTransfer, Rect{});
    Put(plan, kViewTransfer, Rect{});
    return;
  }
  const int right = in.width - kPad;
  const int key = right - kAbortWidth;
  const int bar = std::max(left, key - kKeyGap - kTransferBarMost);
  Put(plan, kIdAbortTransfer, Rect{key, top, right, top + kTransferHeight});
  Put(plan, kViewTransfer, Rect{bar, top, key - kKeyGap, top + kTransferHeight});
}

// Everything above the work area: the top band with the program and link keys, and the bar
// with surfaces and simulator tools.
void PlanTopBar(LayoutPlan& plan, const LayoutInput& in) {
  plan.areas.topBand = Rect{0, 0, in.width, kTopBand};
  PutRow(plan, kTopKeysLeft, kTopKeysTop, kBarKeyHeight, kTopKeys, kKeyGap);
  PutTransfer(plan, in, kTransferLeft, kTransferTop);
  const int right = in.width - kPad;
  PutRow(plan, right - RowWidth(kUnitKeys, kKeyGap), kTopKeysTop, kBarKeyHeight, kUnitKeys,
         kKeyGap);
  // The link's read-outs lie below the keys that use it. A port given by its device path may be
  // long and stands last.
  Put(plan, kIdDncState, Rect{290, 47, 470, 67});
  Put(plan, kIdDncBaud, Rect{478, 47, 586, 67});
  Put(plan, kIdDncPort, Rect{594, 47, in.transferRuns ? kTransferLeft - kPad : 900, 67});

  const int y = kTopBand + (in.topBarHeight - kTopBand - kBarKeyHeight) / 2;
  Put(plan, kIdBack, Rect{12, y, 108, y + kBarKeyHeight});
  if (!in.rightPanel) Put(plan, kIdPanelHead, Rect{120, y, 300, y + kBarKeyHeight});
  PutSurfaceKeys(plan, in, 312, y);
  const int paths = right - RowWidth(kPathKeys, kKeyGap);
  const int tools = paths - 16 - RowWidth(kToolKeys, 4);
  PutRow(plan, tools, y, kBarKeyHeight, kToolKeys, 4);
  PutRow(plan, paths, y, kBarKeyHeight, kPathKeys, kKeyGap);
}

constexpr int kFeatureKeys[] = {kIdFeatureEdit,   kIdFeatureNew,  kIdFeatureInclude,
                                kIdFeatureDelete, kIdFeatureLock, kIdFeatureHide};
constexpr int kFeatureRows = 4 * 24;  // of the list, which the two columns leave at least

// The six keys in one row, as icons, where two columns would leave the list too low.
void PlanFeatureRow(LayoutPlan& plan, int left, int right, int top) {
  const int width = right - left + 4;
  for (int i = 0; i < 6; ++i) {
    Put(plan, kFeatureKeys[i],
        Rect{left + width * i / 6, top, left + width * (i + 1) / 6 - 4, top + kSmallKey});
  }
}

// Six keys in two columns.
constexpr int kFeatureKeyLean = 14;    // pixels that a key leaves to its neighbour
constexpr int kFeatureKeyLeans = 120;  // in keys wider than this
constexpr int kFeatureKeysHeight = 3 * kSmallKey + 2 * 4;
void PlanFeatureKeys(LayoutPlan& plan, int left, int right, int top) {
  const int half = (right - left - kKeyGap) / 2;
  for (int i = 0; i < 6; ++i) {
    const int y = top + i / 2 * (kSmallKey + 4);
    const bool second = i % 2 == 1;
    // The last key bears the longest words.
    const int lean = i >= 4 && half > kFeatureKeyLeans ? kFeatureKeyLean : 0;
    Put(plan, kFeatureKeys[i],
        Rect{second ? right - half - lean : left, y, second ? right : left + half - lean,
             y + kSmallKey});
  }
}

constexpr int kModeListGap = 3;  // so that a low window still shows all eleven rows
void PlanLeftPanel(LayoutPlan& plan, const LayoutInput& in, int bottom) {
  const int left = kPad;
  const int right = plan.leftPanelWidth - kPad;
  const int top = in.topBarHeight;
  plan.areas.leftPanel = Rect{0, top, plan.leftPanelWidth, bottom};
  const int separator = top + SeparatorDepth(in.height - top);
  plan.areas.separator = Rect{left, separator, right, separator + 1};
  Put(plan, kIdModeList, Rect{left, top + kModeListGap, right, separator - kModeListGap});

  int y = separator + 8;
  const int half = (right - left - kKeyGap) / 2;
  Put(plan, kIdShowFeatures, Rect{left, y, left + half, y + kSmallKey + 2});
  Put(plan, kIdShowIndex, Rect{right - half, y, right, y + kSmallKey + 2});
  y += kSmallKey + 2 + 6;

  const int hint = bottom - 5 - 38;
  const int name = hint - 4 - kSmallKey;
  const bool low = name - 6 - kFeatureKeysHeight - 6 - y < kFeatureRows;
  const int keys = name - 6 - (low ? kSmallKey : kFeatureKeysHeight);
  Put(plan, kIdFeatureList, Rect{left, y, right, keys - 6});
  if (low) {
    PlanFeatureRow(plan, left, right, keys);
  } else {
    PlanFeatureKeys(plan, left, right, keys);
  }
  Put(plan, kIdFeatureName, Rect{left, name, right - 76 - kKeyGap, name + kSmallKey});
  Put(plan, kIdFeatureRename, Rect{right - 76, name, right, name + kSmallKey});
  Put(plan, kIdFeatureHint, Rect{left, hint, right, hint + 38});
}

// The tab bar: up to eight tabs and "+", in two rows when one would make them unreadable, and
// its keys at the right. The y below it.
int PlanTabBar(LayoutPlan& plan, const LayoutInput& in, int left, int right) {
  const int top = in.topBarHeight + 5;
  const int keys = right - RowWidth(kTabBarKeys, kKeyGap);
  constexpr int kPlus = 32;
  constexpr int kGap = 4;
  const int count = std::clamp(in.tabCount, 1, kMaxTabs);
  const int space = keys - 12 - left - kPlus - kGap;
  int rows = 1;
  if (space / count - kGap < kTabLeast) rows = 2;
  const int inRow = (count + rows - 1) / rows;
  const int width = std::min(kTabMost, space / inRow - kGap);
  int x = left;
  int y = top;
  for (int i = 0; i < kMaxTabs; ++i) {
    if (i >= count) {
      Put(plan, kIdTabFirst + i, Rect{});
      continue;
    }
    if (i == inRow) {
      x = left;
      y += kTabHeight + kGap;
    }
    Put(plan, kIdTabFirst + i, Rect{x, y, x + width, y + kTabHeight});
    x += width + kGap;
  }
  Put(plan, kIdTabNew, Rect{x, y, x + kPlus, y + kTabHeight});
  PutRow(plan, keys, top, kTabHeight, kTabBarKeys, kKeyGap);
  return top + rows * kTabHeight + (rows - 1) * kGap + 6;
}

bool IsOperationKey(int id) { return id == kIdPlayPrevious || id == kIdPlayNext; }

// Keys of one size from the left, less wide where the column is narrow. The x behind the last.
int PutEvenKeys(LayoutPlan& plan, const int (&ids)[8], const Rect& column, int y,
                const ViewBars& bars) {
  const int width = std::min(bars.keyWidth, (RectWidth(column) - 7 * bars.gap) / 8);
  int x = column.left;
  for (const int id : ids) {
    if (IsOperationKey(id) && !bars.operations) {
      Put(plan, id, Rect{});
      continue;
    }
    Put(plan, id, Rect{x, y, x + width, y + bars.keyHeight});
    x += width + bars.gap;
  }
  return x - bars.gap;
}

void HideView(LayoutPlan& plan) {
  for (int id : kViewKeys) Put(plan, id, Rect{});
  Put(plan, kViewToolpath, Rect{});
  for (int id : kPlayKeys) Put(plan, id, Rect{});
  Put(plan, kIdSpeedSlider, Rect{});
}

// The toolpath view with its keys above and the playback bar below. The slider stands beside
// the playback keys where there is room, else under them.
void PlanView(LayoutPlan& plan, const Rect& column, const ViewBars& bars) {
  const int viewKeys = 8 * (bars.keyWidth + bars.gap) - bars.gap;
  const int indent = std::clamp(RectWidth(column) - viewKeys, 0, bars.left);
  PutEvenKeys(plan, kViewKeys, {column.left + indent, column.top, column.right, column.bottom},
              column.top, bars);
  const int top = column.top + bars.keyHeight + bars.apart;
  const int keys = bars.operations ? 8 : 6;
  const int keysWidth = keys * (bars.keyWidth + bars.gap) - bars.gap;
  const bool beside = RectWidth(column) >= keysWidth + kSliderBeside + kSliderLeast;
  const int under = beside ? 0 : kSliderHeight + kSliderGap;
  const int y = column.bottom - under - bars.keyHeight;
  Put(plan, kViewToolpath, Rect{column.left, top, column.right, y - bars.apart});
  const int behind = PutEvenKeys(plan, kPlayKeys, column, y, bars);
  Rect slider{column.left, column.bottom - kSliderHeight, column.right, column.bottom};
  if (beside) {
    const int height = std::min(kSliderHeight, bars.keyHeight);
    slider.left = behind + kSliderBeside;
    slider.top = y + (bars.keyHeight - height) / 2;
    slider.bottom = slider.top + height;
  }
  Put(plan, kIdSpeedSlider, slider);
}

// A panel in the work area takes the editor's height to the right end of the area, whether the
// view reaches further down or not.
void PlanEditor(LayoutPlan& plan, const Rect& area, int workRight) {
  plan.areas.work = Rect{area.left, area.top, workRight, area.bottom};
  Put(plan, kViewGutter, Rect{area.left, area.top, area.left + kGutterWidth, area.bottom});
  Put(plan, kIdEditor, Rect{area.left + kGutterWidth, area.top, area.right, area.bottom});
}

constexpr KeyWidth kOutputKeys[] = {{kIdPreflight, 176}, {kIdRenumber, 78}};
constexpr KeyWidth kOutputRow[] = {
    {kIdPreflight, 176}, {kIdRenumber, 78}, {kIdStrip, kStripKeyWidth}};

// The edge above the head of the output, from one side of the editor's column to the other.
void PlanStripEdge(LayoutPlan& plan, int left, int right, int headTop) {
  plan.areas.stripEdge = Rect{left, headTop - kAboveStrip, right, headTop};
}

// The head row of the output with the keys that write into it, and the key that closes it.
void PlanOutputHead(LayoutPlan& plan, int left, int right, int y) {
  PlanStripEdge(plan, left, right, y);
  const int keys = right - RowWidth(kOutputRow, kKeyGap);
  Put(plan, kIdOutputHead, Rect{left, y, keys - kKeyGap, y + kHeadRow});
  PutRow(plan, keys, y, kHeadRow, kOutputRow, kKeyGap);
}

// The top of the output: as the mode has it, or as the user dragged it, with room for the editor
// above. Closed, it lies below the work area, and its head is the last row there.
int OutputTop(const LayoutInput& in, const Rect& work, int height, int head) {
  if (in.stripClosed) return work.bottom + kBelowHead;
  const int most = RectHeight(work) - head - kBelowHead - kAboveStrip -
                   (in.viewAway ? kPanelAboveStrip : kBesideStrip);
  if (in.stripHeight > 0) height = in.stripHeight;
  return work.bottom - std::max(kStripLeast, std::min(height, most));
}

void PlanOutput(LayoutPlan& plan, const Rect& place) {
  plan.areas.output = IsEmpty(place) ? Rect{} : place;
  Put(plan, kIdOutputLog, place);
}

// The words of the head in a line of their own, where a panel leaves them no room beside the keys.
bool HasHeadAbove(const LayoutInput& in, int width) {
  const int keys = RowWidth(kOutputRow, kKeyGap);
  return in.headPanel && width < kHeadWords + kHeadPanelLeast + keys + 2 * kKeyGap;
}

// The head in two lines: the words, with the key that closes the strip at their end, then the keys
// that write into the output.
void PlanOutputHeadInTwo(LayoutPlan& plan, const Rect& head) {
  PlanStripEdge(plan, head.left, head.right, head.top);
  const int y = head.bottom - kHeadRow;
  const int close = head.right - kStripKeyWidth;
  Put(plan, kIdOutputHead, Rect{head.left, head.top, close - kKeyGap, y});
  Put(plan, kIdStrip, Rect{close, head.top, head.right, y});
  PutRow(plan, head.right - RowWidth(kOutputKeys, kKeyGap), y, kHeadRow, kOutputKeys, kKeyGap);
}

// The head with a panel left of its keys.
void PlanOutputHeadWithPanel(LayoutPlan& plan, const Rect& head) {
  PlanStripEdge(plan, head.left, head.right, head.top);
  const int y = head.bottom - kHeadRow;
  if (y == head.top) {
    const int keys = head.right - RowWidth(kOutputRow, kKeyGap);
    const int words = head.left + kHeadWords;
    Put(plan, kIdOutputHead, Rect{head.left, y, words, head.bottom});
    plan.areas.outputHead = Rect{words + kKeyGap, y, keys - kKeyGap, head.bottom};
    PutRow(plan, keys, y, kHeadRow, kOutputRow, kKeyGap);
    return;
  }
  PlanOutputHeadInTwo(plan, head);
  const int keys = head.right - RowWidth(kOutputKeys, kKeyGap);
  plan.areas.outputHead = Rect{head.left, y, keys - kKeyGap, head.bottom};
}

// Two rows of tabs take their height from the editor, not from the words below.
int OutputHeight(const LayoutInput& in) {
  const int height = in.height - kStatusHeight - in.topBarHeight;
  return std::clamp(height * 31 / 100, kOutputLeast, 320);
}

// The words beside the output need 180 pixels; in a window on a small screen code and view come
// first.
int HomeOutputHeight(const LayoutInput& in) {
  const int height = in.height - kStatusHeight - in.topBarHeight;
  return std::clamp(height * 28 / 100, in.height < kUsualHeight ? kOutputBelowView : 182, 280);
}

// What the user drags: the output from its top to its foot.
void NoteStrip(LayoutPlan& plan, int top, int foot) {
  plan.areas.stripTop = top;
  plan.areas.stripFoot = foot;
}

// What stands in the strip at Home. The quick workflow yields first: to a low strip, and to an
// output that would be too narrow beside it.
void PlanHomeStrip(LayoutPlan& plan, const LayoutInput& in, const Rect& strip) {
  if (IsEmpty(strip)) {
    for (const int id : {kIdInfoPanel, kIdHelpText}) Put(plan, id, Rect{});
    return PlanOutput(plan, Rect{});
  }
  const int width = RectWidth(strip);
  const int info = std::clamp(width * 28 / 100, 210, 320);
  const int page = in.footPanel ? std::clamp(width * 36 / 100, 290, 460) + kPad : 0;
  int help = in.mode == kModeHome ? std::clamp(width * 28 / 100, 210, 340) + kPad : 0;
  const int output = width - info - kPad - page - help;
  if (RectHeight(strip) < kWorkflowLeast || output < kOutputWidthLeast) help = 0;
  const int infoRight = strip.right - help;
  int right = infoRight - info - kPad;
  if (in.footPanel) {
    plan.areas.foot = Rect{right + kPad - page, strip.top, right, strip.bottom};
    right -= page;
  }
  PlanOutput(plan, Rect{strip.left, strip.top, right, strip.bottom});
  Put(plan, kIdInfoPanel, Rect{infoRight - info, strip.top, infoRight, strip.bottom});
  Put(plan, kIdHelpText, Rect{infoRight + kPad, strip.top, strip.right, strip.bottom});
}

// Home: workflow below. Code index: its page instead. The view reaches down beside the output's
// head.
void PlanHome(LayoutPlan& plan, const LayoutInput& in, const Rect& work) {
  const int width = RectWidth(work);
  const int view = std::min(width * 2 / 5, width - kPad - kGutterWidth - kEditorLeast);
  const int split = work.right - view;
  const int line = HasHeadAbove(in, split - kPad - work.left) ? kHeadLine : 0;
  const int outputTop = OutputTop(in, work, HomeOutputHeight(in), kHeadRow + line);
  const int headTop = outputTop - kBelowHead - kHeadRow - line;
  NoteStrip(plan, outputTop, work.bottom);
  PlanEditor(plan, Rect{work.left, work.top, split - kPad, headTop - kAboveStrip}, work.right);
  if (in.viewAway) {
    HideView(plan);
  } else {
    const int foot = in.stripClosed ? work.bottom : outputTop - kAboveStrip;
    PlanView(plan, Rect{split, work.top, work.right, foot}, kWideBars);
  }
  if (in.headPanel) {
    PlanOutputHeadWithPanel(plan, Rect{work.left, headTop, split - kPad, outputTop - kBelowHead});
  } else {
    PlanOutputHead(plan, work.left, split - kPad, headTop);
  }
  PlanHomeStrip(plan, in, Rect{work.left, outputTop, work.right, work.bottom});
}

// Simulator: the view takes the whole height at the right, the output lies below the editor, with
// the words of its head above its keys where the column is narrow. If the view is away, the output
// takes its width.
void PlanSimulator(LayoutPlan& plan, const LayoutInput& in, const Rect& work) {
  const int width = RectWidth(work);
  const int view = std::min(width * 3 / 5, width - kPad - kGutterWidth - kEditorBesidePath);
  const int split = work.right - view;
  const int column = split - kPad - work.left;
  const int line = column < kHeadWordsLeast + RowWidth(kOutputRow, kKeyGap) ? kHeadLine : 0;
  const int outputTop = OutputTop(in, work, OutputHeight(in), kHeadRow + line);
  NoteStrip(plan, outputTop, work.bottom);
  const int headTop = outputTop - kBelowHead - kHeadRow - line;
  PlanEditor(plan, Rect{work.left, work.top, split - kPad, headTop - kAboveStrip}, work.right);
  if (in.viewAway) {
    HideView(plan);
  } else {
    PlanView(plan, Rect{split, work.top, work.right, work.bottom}, kWideBars);
  }
  if (line > 0) {
    PlanOutputHeadInTwo(plan, Rect{work.left, headTop, split - kPad, outputTop - kBelowHead});
  } else {
    PlanOutputHead(plan, work.left, split - kPad, headTop);
  }
  const int right = in.viewAway ? work.right : split - kPad;
  PlanOutput(plan, Rect{work.left, outputTop, right, work.bottom});
  Put(plan, kIdInfoPanel, Rect{});
  Put(plan, kIdHelpText, Rect{});
}

// The width of a view between the editor and a right panel; 0: there is no room for one.
int WidthBesidePanel(const LayoutInput& in, int workWidth) {
  if (in.heightAboveView == 0 || in.viewAway) return 0;
  const int width = std::min(workWidth * 2 / 5, workWidth - kPad - kGutterWidth - kEditorLeast);
  return width >= kBesideLeast ? width : 0;
}

// The height of a view under the editor with its bars, beside the panel; 0: there is no room for
// one. The output is lower then.
int HeightUnderEditor(const LayoutInput& in, const Rect& work) {
  if (in.heightAboveView == 0 || in.viewAway) return 0;
  const int output = work.bottom - OutputTop(in, work, kOutputBelowView, kHeadRow);
  const int column = RectHeight(work) - output - kHeadRow - kBelowHead - kAboveStrip;
  const int height = column * kUnderPercent / 100;
  return height - kNarrowBarsHeight >= kUnderLeast ? height : 0;
}

// The view in the lower part of a right panel, whose own controls keep the upper one. Where too
// little would be left to them it is not shown.
void PlanViewBelow(LayoutPlan& plan, const LayoutInput& in) {
  Rect& body = plan.areas.panelBody;
  const int most = RectHeight(body) - kPanelToView - kNarrowBarsHeight - kBelowLeast;
  if (most < kFormLeast) return HideView(plan);
  const int kept = body.top + std::min(in.heightAboveView, most);
  PlanView(plan, Rect{body.left, kept + kPanelToView, body.right, body.bottom}, kNarrowBars);
  body.bottom = kept;
}

// Of the help below a panel, out of the height that both share: the panel's fields come first.
int HelpHeight(int shared) {
  const int left = std::min(shared - kPad - kBodyBeforeHelp, kHelpHeight);
  return left >= kHelpLeast ? left : 0;
}

// A mode with a right panel: the panel takes the view's place, unless the mode shows the view too.
void PlanPanelMode(LayoutPlan& plan, const LayoutInput& in, const Rect& work) {
  const int panel = std::min(RightPanelWidth(in.width), in.width - work.left - kEditorLeast - kPad);
  const Rect side{in.width - panel, work.top - 2, in.width, work.bottom + 6};
  plan.areas.rightPanel = side;
  const int right = side.left - kPad;
  const int view = WidthBesidePanel(in, right - work.left);
  const int under = view > 0 ? 0 : HeightUnderEditor(in, work);
  const int told = under > 0 ? kOutputBelowView : OutputHeight(in);
  const int outputTop = OutputTop(in, work, told, kHeadRow);
  NoteStrip(plan, outputTop, work.bottom);
  const int headTop = outputTop - kBelowHead - kHeadRow;
  const int foot = headTop - kAboveStrip;
  const int split = view > 0 ? right - view - kPad : right;
  const int left = side.left + 12;
  const int help = in.helpBelow ? HelpHeight(side.bottom - 6 - (side.top + kPanelTop)) : 0;
  const int helpTop = side.bottom - 6 - help;
  const int bodyFoot = help > 0 ? helpTop - kPad : helpTop;
  plan.areas.panelBody = Rect{left, side.top + kPanelTop, in.width - 12, bodyFoot};
  Put(plan, kIdPanelHead, Rect{left, side.top + 8, in.width - 12, side.top + 34});
  PlanEditor(plan, Rect{work.left, work.top, split, under > 0 ? foot - under - kPad : foot}, right);
  if (view > 0) {
    PlanView(plan, Rect{right - view, work.top, right, foot}, kNarrowBars);
  } else if (under > 0) {
    PlanView(plan, Rect{work.left, foot - under, right, foot}, kNarrowBars);
  } else if (in.heightAboveView > 0) {
    PlanViewBelow(plan, in);
  } else {
    HideView(plan);
  }
  PlanOutputHead(plan, work.left, right, headTop);
  PlanOutput(plan, Rect{work.left, outputTop, right, work.bottom});
  Put(plan, kIdInfoPanel, Rect{});
  Put(plan, kIdHelpText, Rect{left, helpTop, in.width - 12, helpTop + help});
}

// The other workspaces: a band with their own head, the keys that hold everywhere, the
// program tabs, and the rest for the workspace, less the view where it shows one.
LayoutPlan PlanWorkspace(const LayoutInput& in) {
  constexpr KeyWidth kBackKey[] = {{kIdBack, 44}};
  constexpr KeyWidth kFileKeys[] = {{kIdNew, 64}, {kIdOpen, 72}, {kIdSaveMenu, 82}};
  LayoutPlan plan;
  plan.leftPanelWidth = FittedLeftPanel(in.width, in.leftPanelWidth);
  plan.areas.topBand = Rect{0, 0, in.width, kWorkspaceBand};
  const int y = (kWorkspaceBand - kBarKeyHeight) / 2;
  const int keys = PutRow(plan, kWorkspaceKeysLeft, y, kBarKeyHeight, kBackKey, kKeyGap);
  const int behind =
      PutRow(plan, PutSurfaceKeys(plan, in, keys, y) + 16, y, kBarKeyHeight, kFileKeys, kKeyGap);
  PutTransfer(plan, in, behind + kPad, (kWorkspaceBand - kTransferHeight) / 2);
  int x = kPad;
  const int count = std::clamp(in.tabCount, 1, kMaxTabs);
  constexpr int kPlus = 32;
  const int width = std::min(kTabMost, (in.width - 2 * kPad - kPlus) / count - kKeyGap);
  const int tabs = kWorkspaceBand + 4;
  for (int i = 0; i < kMaxTabs; ++i) {
    const bool shown = i < count;
    Put(plan, kIdTabFirst + i, shown ? Rect{x, tabs, x + width, tabs + kTabHeight} : Rect{});
    if (shown) x += width + kKeyGap;
  }
  Put(plan, kIdTabNew, Rect{x, tabs, x + kPlus, tabs + kTabHeight});
  const int foot = in.height - kStatusHeight;
  plan.areas.workspace = Rect{0, tabs + kTabHeight + 2, in.width, foot};
  if (in.viewBesideSurface) {
    Rect& area = plan.areas.workspace;
    const int right = in.width - kPad;
    const int split = right - in.width * 2 / 5;
    PlanView(plan, Rect{split, area.top + 4, right, foot - 6}, kNarrowBars);
    area.right = split - kPad;
  }
  plan.areas.status = Rect{0, foot, in.width, in.height};
  Put(plan, kIdStatusLine, Rect{12, foot + 3, in.width - 12, in.height - 3});
  return plan;
}

Placement* PlacementOf(LayoutPlan& plan, int id) {
  for (int i = 0; i < plan.count; ++i) {
    if (plan.placements[i].id == id) return &plan.placements[i];
  }
  return nullptr;
}

// Beside the view stand keys for the same: those of the bar above go, and PATH moves up to VIEW.
void HideDoubles(LayoutPlan& plan) {
  const Placement* view = PlacementOf(plan, kViewToolpath);
  if (!view || IsEmpty(view->place)) return;
  for (const KeyWidth& key : kToolKeys) PlacementOf(plan, key.id)->place = Rect{};
  Placement* play = PlacementOf(plan, kIdPlay);
  Placement* path = PlacementOf(plan, kIdPath);
  const int width = RectWidth(path->place);
  path->place.right = play->place.right;
  path->place.left = path->place.right - width;
  play->place = Rect{};
}

}  // namespace

int FittedLeftPanel(int clientWidth, int wanted) {
  return std::max(std::min(wanted, clientWidth - kLeastPanelSpace), kLeftPanelLeast);
}

int RightPanelWidth(int clientWidth) { return clientWidth < 1180 ? 320 : 350; }

int SeparatorDepth(int workHeight) { return std::max((workHeight * 48 - 1536) / 100, 210); }

LayoutPlan PlanLayout(const LayoutInput& in) {
  if (in.surface != kSurfaceCode) return PlanWorkspace(in);
  LayoutPlan plan;
  plan.leftPanelWidth = FittedLeftPanel(in.width, in.leftPanelWidth);
  const int foot = in.height - kStatusHeight;
  PlanTopBar(plan, in);
  PlanLeftPanel(plan, in, foot);
  const int left = plan.leftPanelWidth + kPad;
  const int right = in.width - kPad;
  const int top = PlanTabBar(plan, in, left, right);
  plan.areas.workArea = Rect{plan.leftPanelWidth, in.topBarHeight, in.width, foot};
  const Rect work{left, top, right, foot - 6};
  if (in.rightPanel) {
    PlanPanelMode(plan, in, work);
  } else if (in.mode == kModeSimulator) {
    PlanSimulator(plan, in, work);
  } else {
    PlanHome(plan, in, work);
  }
  plan.areas.status = Rect{0, foot, in.width, in.height};
  const int caret = in.width - 12 - kCaretPlaceWidth;
  Put(plan, kIdStatusLine, Rect{12, foot + 3, caret - kPad, in.height - 3});
  Put(plan, kIdCaretPlace, Rect{caret, foot + 3, in.width - 12, in.height - 3});
  HideDoubles(plan);
  return plan;
}

Rect PlaceIn(const LayoutPlan& plan, int id) {
  for (int i = 0; i < plan.count; ++i) {
    if (plan.placements[i].id == id) return plan.placements[i].place;
  }
  return Rect{};
}

}  // namespace morva
