#include "simulator/stock_envelope.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "library/outline.h"
#include "library/units.h"

namespace morva {

StockEnvelope stockEnvelope;

namespace {

struct Extent {
  bool any = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
};

// Calls with every point of the drawn outlines.
template <typename Take>
void EachOutlinePoint(const FeatureSettings& settings, Take take) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  for (std::int32_t i = 0; i < std::min(settings.itemCount, kMaxItems); ++i) {
    const SketchObject object = ObjectOf(settings.items[i]);
    if (object.type > kTypeSlot) continue;
    const int count = ObjectOutline(object, xs, ys);
    for (int k = 0; k < count; ++k) take(xs[k], ys[k]);
  }
}

void Include(Extent& box, double x, double y) {
  if (!box.any) {
    box = {true, x, x, y, y};
    return;
  }
  box.minX = std::min(box.minX, x);
  box.maxX = std::max(box.maxX, x);
  box.minY = std::min(box.minY, y);
  box.maxY = std::max(box.maxY, y);
}

// Whether the drawing has a point in each corner of its box.
bool HasCorners(const FeatureSettings& settings, const Extent& box) {
  const double close = 1e-3 * std::max(box.maxX - box.minX, box.maxY - box.minY);
  unsigned corners = 0;
  EachOutlinePoint(settings, [&](double x, double y) {
    const bool left = x - box.minX <= close;
    const bool low = y - box.minY <= close;
    const bool inCorner = (left || box.maxX - x <= close) && (low || box.maxY - y <= close);
    if (inCorner) corners |= 1U << ((left ? 1U : 0U) + (low ? 2U : 0U));
  });
  return corners == 0xF;
}

bool SketchEnvelope(const FeatureSettings& settings, double scale, StockEnvelope& envelope) {
  const double thickness = settings.values[kSketchThickness];
  if (settings.itemCount < 1 || !(thickness > 0.0)) return false;
  Extent box;
  EachOutlinePoint(settings, [&box](double x, double y) { Include(box, x, y); });
  if (!box.any || !(box.maxX > box.minX) || !(box.maxY > box.minY)) return false;
  envelope.minX = box.minX * scale;
  envelope.maxX = box.maxX * scale;
  envelope.minY = box.minY * scale;
  envelope.maxY = box.maxY * scale;
  envelope.top = 0.0;
  envelope.thickness = thickness * scale;
  envelope.bottom = -envelope.thickness;
  envelope.rounded = !HasCorners(settings, box);
  envelope.depthSaid = true;
  return true;
}

// A plate's thickness stands in its bottom alone.
bool PlateEnvelope(const FeatureSettings& settings, double scale, StockEnvelope& envelope) {
  const double width = std::fabs(settings.values[0]);
  const double height = settings.a == kRoundPlate ? width : std::fabs(settings.values[1]);
  if (!(width > 0.0) || !(height > 0.0)) return false;
  const double stored = settings.values[kPlateThickness];
  const double thickness = stored > 0.0 ? stored : std::fabs(settings.values[kPlateDepth]);
  envelope.maxX = width / 2.0 * scale;
  envelope.minX = -envelope.maxX;
  envelope.maxY = height / 2.0 * scale;
  envelope.minY = -envelope.maxY;
  envelope.top = 0.0;
  envelope.thickness = 0.0;
  envelope.bottom = -(thickness * scale);
  envelope.rounded = settings.a == kRoundPlate;
  envelope.depthSaid = stored > 0.0;
  return true;
}

}  // namespace

StockEnvelope StockOfFeatures() {
  const ProgramTab* tab = ActiveTab();
  for (std::int32_t i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    const FeatureSettings& settings = row.settings;
    if (tab && IdListHolds(tab->hiddenIds, row.id)) continue;
    const double scale = DisplayUnitsPer(settings);
    StockEnvelope found;
    const bool usable = settings.kind == kKindSketch  ? SketchEnvelope(settings, scale, found)
                        : settings.kind == kKindPlate ? PlateEnvelope(settings, scale, found)
                                                      : false;
    if (!usable) continue;
    found.shown = true;
    return found;
  }
  return {};
}

void FindStockEnvelope() { stockEnvelope = StockOfFeatures(); }

double DisplayUnitsPer(const FeatureSettings& settings) {
  const bool metric = settings.metric != 0;
  return metric == UnitsMetric() ? 1.0 : UnitsMetric() ? kMmPerInch : kInchPerMm;
}

}  // namespace morva
