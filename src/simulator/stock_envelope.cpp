#include "simulator/stock_envelope.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "text/series_trig.h"

namespace morva {

StockEnvelope stockEnvelope;

namespace {

// Items of a drawing: p0 and p1 the anchor, p2 and p3 the sizes, p4 the angle in degrees.
enum ItemType : std::int32_t { kLine = 0, kRectangle = 1, kCircle = 2, kSlot = 3, kWorkPoint = 4 };

// Places in a record's numbers.
inline constexpr int kSketchThickness = 15;
inline constexpr int kPlateDepth = 10;
inline constexpr int kPlateThickness = 13;
inline constexpr std::int32_t kRoundPlate = 1;

struct Extent {
  bool any = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
};

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

// An item's outline in its own frame is turned by its angle and moved to its anchor.
struct Placement {
  double x = 0;
  double y = 0;
  double cosine = 1;
  double sine = 0;
};

void IncludePlaced(Extent& box, const Placement& at, double u, double v) {
  Include(box, at.x + u * at.cosine - v * at.sine, at.y + u * at.sine + v * at.cosine);
}

void IncludeCircle(Extent& box, const Placement& at, double radius) {
  constexpr int kSteps = 96;
  constexpr double kStep = 6.283185307179586 / kSteps;
  for (int i = 0; i <= kSteps; ++i) {
    IncludePlaced(box, at, radius * SeriesCosine(i * kStep), radius * SeriesSine(i * kStep));
  }
}

void IncludeSlot(Extent& box, const Placement& at, double length, double width) {
  constexpr int kSteps = 32;  // of a half turn
  constexpr double kHalfTurn = 3.14159265359;
  constexpr double kQuarterTurn = 1.570796326795;
  const double radius = width / 2.0;
  const double half = std::max(0.0, (length - width) / 2.0);
  for (int cap = 0; cap < 2; ++cap) {
    const double from = cap == 0 ? -kQuarterTurn : kQuarterTurn;
    for (int i = 0; i <= kSteps; ++i) {
      const double angle = from + kHalfTurn * i / kSteps;
      IncludePlaced(box, at, (cap == 0 ? half : -half) + radius * SeriesCosine(angle),
                    radius * SeriesSine(angle));
    }
  }
}

void IncludeItem(Extent& box, const FeatureItem& item) {
  const double angle = item.p4 * kRadiansPerDegree;
  const Placement at = {item.p0, item.p1, SeriesCosine(angle), SeriesSine(angle)};
  const double halfX = item.p2 / 2.0;
  const double halfY = item.p3 / 2.0;
  switch (item.type) {
    case kLine:
      IncludePlaced(box, at, 0.0, 0.0);
      IncludePlaced(box, at, item.p2, 0.0);
      break;
    case kRectangle:
      IncludePlaced(box, at, -halfX, -halfY);
      IncludePlaced(box, at, halfX, -halfY);
      IncludePlaced(box, at, halfX, halfY);
      IncludePlaced(box, at, -halfX, halfY);
      break;
    case kCircle:
      IncludeCircle(box, at, halfX);
      break;
    case kSlot:
      IncludeSlot(box, at, item.p2, item.p3);
      break;
    default:
      break;
  }
}

bool SketchEnvelope(const FeatureSettings& settings, double scale, StockEnvelope& envelope) {
  const double thickness = settings.values[kSketchThickness];
  if (settings.itemCount < 1 || !(thickness > 0.0)) return false;
  Extent box;
  for (std::int32_t i = 0; i < std::min(settings.itemCount, kMaxItems); ++i) {
    if (settings.items[i].type < kWorkPoint) IncludeItem(box, settings.items[i]);
  }
  if (!box.any || !(box.maxX > box.minX) || !(box.maxY > box.minY)) return false;
  envelope.minX = box.minX * scale;
  envelope.maxX = box.maxX * scale;
  envelope.minY = box.minY * scale;
  envelope.maxY = box.maxY * scale;
  envelope.top = 0.0;
  envelope.thickness = thickness * scale;
  envelope.bottom = -envelope.thickness;
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
  return true;
}

}  // namespace

void FindStockEnvelope() {
  stockEnvelope = StockEnvelope{};
  const ProgramTab* tab = ActiveTab();
  for (std::int32_t i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    const FeatureSettings& settings = row.settings;
    if (tab && IdListHolds(tab->hiddenIds, row.id)) continue;
    const bool metric = settings.metric != 0;
    const double scale = metric == UnitsMetric() ? 1.0 : UnitsMetric() ? kMmPerInch : kInchPerMm;
    StockEnvelope found;
    const bool usable = settings.kind == kKindSketch  ? SketchEnvelope(settings, scale, found)
                        : settings.kind == kKindPlate ? PlateEnvelope(settings, scale, found)
                                                      : false;
    if (!usable) continue;
    stockEnvelope = found;
    stockEnvelope.shown = true;
    return;
  }
}

}  // namespace morva
