#include "simulator/stock_envelope.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <utility>

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

// The thickness of a skim's stock is one of pictures, and no depth that was said.
bool SkimEnvelope(const FeatureSettings& settings, double scale, StockEnvelope& envelope) {
  const double* const edges = settings.values + kSkimEdges;
  if (!(edges[2] > edges[0]) || !(edges[3] > edges[1])) return false;
  envelope.minX = edges[0] * scale;
  envelope.minY = edges[1] * scale;
  envelope.maxX = edges[2] * scale;
  envelope.maxY = edges[3] * scale;
  const bool extra = settings.itemCount > 0;
  const double thickness = extra ? settings.items[0].p2 : 0;
  envelope.top = settings.values[kSkimSurface] * scale;
  envelope.thickness = (thickness > 0 ? thickness : 1) * scale;
  envelope.bottom = envelope.top - envelope.thickness;
  envelope.rounded = extra && settings.items[0].p3 == kSkimRoundStrategy;
  return true;
}

using EnvelopeOf = bool (*)(const FeatureSettings& settings, double scale, StockEnvelope& envelope);

// That of the first feature of a kind that gives one.
const FeatureRecord* FindEnvelope(std::initializer_list<std::pair<FeatureKind, EnvelopeOf>> kinds,
                                  StockEnvelope& envelope) {
  const ProgramTab* tab = ActiveTab();
  for (std::int32_t i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (tab && IdListHolds(tab->hiddenIds, row.id)) continue;
    for (const auto& [kind, envelopeOf] : kinds) {
      envelope = {};
      if (row.settings.kind != kind) continue;
      if (!envelopeOf(row.settings, DisplayUnitsPer(row.settings), envelope)) continue;
      envelope.shown = true;
      return &row;
    }
  }
  envelope = {};
  return nullptr;
}

}  // namespace

StockEnvelope StockOfFeatures() {
  StockEnvelope envelope;
  FindEnvelope({{kKindSketch, SketchEnvelope}, {kKindPlate, PlateEnvelope}}, envelope);
  return envelope;
}

StockEnvelope StockOfSkim(std::int32_t& workOffset) {
  StockEnvelope envelope;
  const FeatureRecord* const skim = FindEnvelope({{kKindSkim, SkimEnvelope}}, envelope);
  workOffset = skim ? skim->settings.b : 0;
  return envelope;
}

void FindStockEnvelope() { stockEnvelope = StockOfFeatures(); }

double DisplayUnitsPer(const FeatureSettings& settings) {
  const bool metric = settings.metric != 0;
  return metric == UnitsMetric() ? 1.0 : UnitsMetric() ? kMmPerInch : kInchPerMm;
}

}  // namespace morva
