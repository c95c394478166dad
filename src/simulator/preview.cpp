#include "simulator/preview.h"

#include <algorithm>
#include <string>

#include "app/command_ids.h"
#include "library/units.h"
#include "platform/window.h"
#include "simulator/machine_motion.h"
#include "simulator/place_pick.h"
#include "simulator/preview_context.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"

namespace morva {

namespace {

// What the builder's path was read from.
std::u16string readText;
bool readMetric = false;
PreviewBox shownStock;

void ReadPath(std::u16string_view text, bool anew) {
  if (!anew && readMetric == UnitsMetric() && readText == text) return;
  readText = text;
  readMetric = UnitsMetric();
  ExtractPathOf(PathOwner::Builder, text, readMetric);
  ShowPlayWords();
}

StockEnvelope StockOf(const PreviewBox& box) {
  StockEnvelope stock;
  stock.shown = box.shown;
  stock.minX = box.minX;
  stock.maxX = box.maxX;
  stock.minY = box.minY;
  stock.maxY = box.maxY;
  stock.top = box.top;
  stock.bottom = box.bottom;
  stock.thickness = box.top - box.bottom;
  return stock;
}

PathBounds Around(const PathBounds& a, const PathBounds& b) {
  return {std::min(a.minX, b.minX), std::max(a.maxX, b.maxX), std::min(a.minY, b.minY),
          std::max(a.maxY, b.maxY), std::min(a.minZ, b.minZ), std::max(a.maxZ, b.maxZ)};
}

PathBounds BoundsOfStock(const StockEnvelope& stock) {
  return {stock.minX, stock.maxX, stock.minY, stock.maxY, stock.bottom, stock.top};
}

// Over the path, its stock and what is drawn around it.
PathBounds BoundsOfAll() {
  PathBounds all = Bounds();
  const StockEnvelope& stock = ShownPath().stock;
  if (stock.shown) all = Around(all, BoundsOfStock(stock));
  if (!switches.showDrawingPaths) return all;
  const PreviewContext& context = ContextOfPreview();
  if (context.drawn) all = Around(all, context.bounds);
  if (context.stock.shown) all = Around(all, BoundsOfStock(context.stock));
  return all;
}

// The view shows all of it, and goes on doing so until the user zooms or shifts it.
ViewState fitted;

bool UserMovedView() {
  const ViewState& now = OwnedBy(PathOwner::Builder).view;
  return now.zoom != fitted.zoom || now.panX != fitted.panX || now.panY != fitted.panY;
}

void FitAll() {
  FrameBounds(BoundsOfAll());
  fitted = OwnedBy(PathOwner::Builder).view;
}

void Refresh() {
  platform::Repaint(kViewToolpath);
  platform::TellViewValue(kViewToolpath);
}

}  // namespace

void ShowPreview(const PathPreview& preview) {
  const bool first = !previewState.stands;
  previewState.stands = true;
  previewState.stockWords = preview.stockWords;
  previewState.tool = preview.tool;
  previewState.diameter = preview.diameter;
  previewState.coverage = preview.coverage;
  previewState.levels = preview.levels;
  previewState.lags = preview.lags;
  ShowPathOf(PathOwner::Builder);
  const bool others = RefreshPreviewContext();
  if (others || shownStock != preview.stock || readMetric != UnitsMetric()) DropPickCross();
  shownStock = preview.stock;
  SetStockOf(PathOwner::Builder, StockOf(preview.stock));
  ReadPath(preview.text, first);
  if (first || !UserMovedView()) FitAll();
  Refresh();
}

void MarkPreview(const PreviewMarker& marker) {
  if (!previewState.stands) return;
  previewState.marked = marker.shown;
  previewState.markerX = marker.x;
  previewState.markerY = marker.y;
  previewState.markerZ = marker.z;
  previewState.markerWords = marker.words;
  Refresh();
}

void LeavePreview() {
  if (!previewState.stands) return;
  DropPlacePick();
  ForgetPreview();
  readText = std::u16string();
  SetStockOf(PathOwner::Builder, StockEnvelope{});
  ResetPlayback(PathOwner::Builder);
  ShowPathOf(EditorOwner());
}

void FollowPreviewedProgram() {
  if (!previewState.stands) return;
  if (RefreshPreviewContext()) DropPickCross();
  Refresh();
}

}  // namespace morva
