// A plate as a settings record of kind 5, and what such a record must be.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

struct PlateRecord;

bool IsPlateRecord(const FeatureSettings& record);
// The record of a new plate: start values in this unit, without a name.
void StartPlateRecord(FeatureSettings& record, bool metric);

// Items that the plate's record takes: custom outline, shapes, depths, labels and places of
// features.
int PlateItems(const PlateRecord& plate);
// What of them belongs to the features from number `features` on, of which the layout has so many.
int PlateItemsOutOfUse(const PlateRecord& plate, int features);
inline constexpr char16_t kPlateFull[] =
    u"Plate metadata capacity exceeded; reduce custom feature complexity.";

// The live plate as a record, without labels that may be left out and find no room. False: it takes
// more items than a record holds, or a number that a record cannot hold, and `record` is unchanged.
bool SavePlateSettings(FeatureSettings& record);
// The live plate from a record: its numbers as texts with 6 decimals, no name, nothing pending. An
// outline that the library lacks is added to it, where there is room, as "Recovered project
// shape". False: it is no record of a plate, or there is no memory, and nothing changed.
bool LoadPlateSettings(const FeatureSettings& record);

}  // namespace morva
