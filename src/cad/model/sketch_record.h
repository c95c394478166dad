// The live sketch as a settings record of kind 4, and what such a record must be.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

bool IsSketchRecord(const FeatureSettings& record);
// The live sketch with the cutting fields read as numbers, fallback 0. False: it does not validate.
bool WriteSketchSettings(FeatureSettings& record);
// The same, but a number that no record can hold is stored as 0: one bad field must not keep the
// drawing from being stored.
bool StoreLiveSketch(FeatureSettings& record);
// Whether the live sketch holds geometry that the record does not.
bool SketchDiffersFrom(const FeatureSettings& record);

}  // namespace morva
