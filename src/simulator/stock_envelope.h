// The stock envelope: the block of material that the first usable feature describes.
#pragma once

namespace morva {

// Sets `stockEnvelope` from the feature table, in display units; not shown where no sketch
// or plate gives one. Hidden features are passed over.
void FindStockEnvelope();

}  // namespace morva
