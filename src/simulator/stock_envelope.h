// The stock envelope: the block of material that the first usable feature describes.
#pragma once

namespace morva {

// Stock around the part, display units.
struct StockEnvelope {
  bool shown = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  double top = 0;
  double bottom = 0;
  double thickness = 0;

  bool operator==(const StockEnvelope&) const = default;
};

extern StockEnvelope stockEnvelope;  // of the program

// Sets `stockEnvelope` from the feature table, in display units; not shown where no sketch
// or plate gives one. Hidden features are passed over.
void FindStockEnvelope();

}  // namespace morva
