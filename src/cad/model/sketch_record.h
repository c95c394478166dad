// The live sketch as a settings record of kind 4, and what such a record must be.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

bool IsSketchRecord(const FeatureSettings& record);
// The record of a new drawing: no objects, the cutting data that fields start with.
void StartSketchRecord(FeatureSettings& record, bool metric);
// Objects, thickness and cutting data of the live sketch into a record that has its head. What is
// no number counts as 0, whatever the code took for it. False: the record does not validate.
bool StoreSketchItems(FeatureSettings& record);
// The whole record. A number that a record cannot hold is stored as 0. One bad field must not cost
// the drawing.
bool StoreLiveSketch(FeatureSettings& record);

}  // namespace morva
