// What the main window paints itself: bands, panels and the frames around its wells.
#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/surfaces.h"
#include "app/wells.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "platform/canvas.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "shell/layout.h"
#include "shell/theme.h"

namespace morva {

using platform::Canvas;
using platform::Colour;
using platform::FontRole;
using platform::Pen;
using platform::Rect;

namespace {

constexpr int kMarkLeft = 26;
constexpr int kMarkTop = 8;
constexpr int kMarkSize = 52;

void DrawMark(Canvas& canvas, const Rect& mark) {
  DrawPanel(canvas, mark, true, kPanelPlain);
  Pen edge;
  edge.colour = kAccent;
  FrameArea(canvas, mark, edge);
  DrawIcon(canvas, kIconMark, (mark.left + mark.right) / 2, (mark.top + mark.bottom) / 2,
           RectWidth(mark) * 10 / 13, kBrightAccent);
}

void DrawTopBand(Canvas& canvas, const Rect& band) {
  DrawPanel(canvas, band, false, kPanelPlain);
  DrawMark(canvas, Rect{kMarkLeft, kMarkTop, kMarkLeft + kMarkSize, kMarkTop + kMarkSize});
  const Surface* up = SurfaceUp();
  PaintText(canvas, Rect{92, 4, up ? 326 : 236, 42}, up ? up->title : u"MORVA", FontRole::Title,
            kMainText, platform::kAlignLeft | platform::kAlignMiddle);
  PaintText(canvas, Rect{93, 44, 288, 66}, up ? up->subtitle : u"CNC EDITOR  \u2022  v4.20",
            FontRole::Body, kBrightAccent, platform::kAlignLeft | platform::kAlignMiddle);
  FillArea(canvas, Rect{band.left, band.bottom - 1, band.right, band.bottom}, kPanelLine);
}

void FrameWells(Canvas& canvas) {
  const Rect gutter = platform::PlaceOf(kViewGutter);
  const Rect editor = platform::PlaceOf(kIdEditor);
  const int focused = platform::FocusedId();
  if (platform::IsVisible(kViewGutter)) {
    FrameWell(canvas, Rect{gutter.left, gutter.top, editor.right, editor.bottom},
              focused == ShownEditor());
  }
  const auto frame = [&canvas, focused](int id) {
    if (platform::IsVisible(id)) FrameWell(canvas, platform::PlaceOf(id), focused == id);
  };
  for (const int id : {kIdModeList, kIdFeatureList, kIdFeatureName, kIdOutputLog, kIdInfoPanel,
                       kIdHelpText, kViewToolpath}) {
    frame(id);
  }
  for (int i = 0; i < PanelCount(); ++i) {
    for (const int id : PanelAt(i).wells) frame(id);
  }
  PaintForms(canvas, platform::kMainWindow);
}

// The view beside a workspace.
void FrameView(Canvas& canvas) {
  FrameWell(canvas, platform::PlaceOf(kViewToolpath), platform::FocusedId() == kViewToolpath);
}

}  // namespace

void PaintWindowIcon(Canvas& canvas) { DrawMark(canvas, platform::CanvasArea(canvas)); }

void PaintMainWindow(Canvas& canvas) {
  const LayoutAreas& areas = Areas();
  const Rect client = platform::CanvasArea(canvas);
  FillArea(canvas, client, kWindowBackground);
  DrawTopBand(canvas, areas.topBand);
  if (app.surface != kSurfaceCode) {
    if (platform::IsVisible(kViewToolpath)) FrameView(canvas);
    FillArea(canvas, areas.status, kDarkBand);
    FillArea(canvas, Rect{0, areas.status.top, client.right, areas.status.top + 1}, kPanelLine);
    return;
  }
  FillArea(canvas, Rect{0, areas.topBand.bottom, client.right, app.topBarHeight}, kDarkBand);
  FillArea(canvas, Rect{0, app.topBarHeight - 1, client.right, app.topBarHeight}, kBandLine);

  const Rect& panel = areas.leftPanel;
  DrawPanel(canvas, panel, false, kPanelDeep);
  FillArea(canvas, Rect{panel.right - 1, panel.top, panel.right, panel.bottom}, kPanelLine);
  FillArea(canvas, areas.separator, kPanelLine);

  const Rect& side = areas.rightPanel;
  if (side.left < side.right) {
    FillArea(canvas, areas.workArea, kWorkArea);
    FillArea(canvas, side, kSidePanel);
    FillArea(canvas, Rect{side.left, side.top, side.left + 1, side.bottom}, kPanelLine);
  }
  FrameWells(canvas);
  FillArea(canvas, areas.status, kDarkBand);
  FillArea(canvas, Rect{0, areas.status.top, client.right, areas.status.top + 1}, kPanelLine);
}

}  // namespace morva
