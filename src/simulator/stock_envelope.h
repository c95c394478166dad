// The stock envelope: the block of material that the first usable feature describes.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

inline constexpr std::int32_t kRoundPlate = 1;  // choice a of a plate's settings

// Stock around the part, display units.
struct StockEnvelope {
  bool shown = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  double top = 0;
  double bottom = 0;
  double thickness = 0;
  bool rounded = false;    // its corners are no stock, or nobody knows
  bool depthSaid = false;  // its thickness was said, and is not taken from the depth of a cut

  bool operator==(const StockEnvelope&) const = default;
};

extern StockEnvelope stockEnvelope;  // of the program

// What the feature table gives, in display units; not shown where no sketch or plate gives one.
// Hidden features are passed over.
StockEnvelope StockOfFeatures();
// The stock before the first pass of the first guided skim, which is not drawn; `workOffset` is
// that of its block, 54 to 59. Not shown where there is none.
StockEnvelope StockOfSkim(std::int32_t& workOffset);
// Sets `stockEnvelope` from it.
void FindStockEnvelope();
// Display units for one unit of a record of settings.
double DisplayUnitsPer(const FeatureSettings& settings);

}  // namespace morva
