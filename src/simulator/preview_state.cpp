#include "simulator/preview_state.h"

#include <algorithm>

#include "simulator/preview_context.h"
#include "simulator/shown_path.h"
#include "simulator/view_switches.h"

namespace morva {

PreviewState previewState;

namespace {

PathBounds Around(const PathBounds& a, const PathBounds& b) {
  return {std::min(a.minX, b.minX), std::max(a.maxX, b.maxX), std::min(a.minY, b.minY),
          std::max(a.maxY, b.maxY), std::min(a.minZ, b.minZ), std::max(a.maxZ, b.maxZ)};
}

PathBounds BoundsOfStock(const StockEnvelope& stock) {
  return {stock.minX, stock.maxX, stock.minY, stock.maxY, stock.bottom, stock.top};
}

}  // namespace

void ForgetPreview() {
  previewState = PreviewState{};
  EmptyPreviewContext();
}

bool PreviewIsShown() { return previewState.stands && ShownOwner() == PathOwner::Builder; }

bool HasLevels() { return PreviewIsShown() && previewState.levels; }

bool HasCoverage() { return PreviewIsShown() && previewState.diameter > 0; }

std::int32_t ToolOf(const MotionPoint& point) {
  return PreviewIsShown() && previewState.tool > 0 ? previewState.tool : point.tool;
}

PathBounds FittedBounds() {
  PathBounds fitted = Bounds();
  if (!PreviewIsShown()) return fitted;
  const StockEnvelope& stock = ShownPath().stock;
  if (stock.shown) fitted = Around(fitted, BoundsOfStock(stock));
  if (!switches.showDrawingPaths) return fitted;
  const PreviewContext& context = ContextOfPreview();
  if (context.drawn) fitted = Around(fitted, context.bounds);
  if (context.stock.shown) fitted = Around(fitted, BoundsOfStock(context.stock));
  return fitted;
}

}  // namespace morva
