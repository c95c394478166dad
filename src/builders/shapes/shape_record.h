// The shape that a block's record of kinds 1 to 3 holds beside its numbers: the row of a built-in
// one in `a`, or -1 with the objects of a saved one as items, in inches.
#pragma once

#include <cstdint>

#include "documents/feature_settings.h"
#include "library/shapes.h"

namespace morva {

// The saved shape of a list's item data, null for a built-in row and past the table's end.
const SavedShape* SavedShapeOf(std::int64_t data);

// Puts the shape of this item data into the record. False: there is no such shape, it is empty, or
// a record cannot hold its numbers.
bool StoreShape(std::int64_t data, FeatureSettings& record);

}  // namespace morva
