// The picture of a plate, for the screen and for paper, drawn from the same places as its code.
//
// Parts of the picture are targets (plate.h): a section for the outline and for a dimension, or a
// feature. The place number of a label is its row in the plate's dimensionLabels.
#pragma once

#include "forms/picture.h"
#include "plate/model/plate.h"

namespace morva {

struct PlatePicture {
  int selected = -1;       // the feature that is drawn as selected
  bool dimensions = true;  // with dimension lines and labels
  bool hidden = true;      // hidden features are drawn, dim; paper leaves them out by itself
};

// Fills the picture. A plate without a name, or without a size, is drawn as far as it can be.
void DrawPlate(const PlateRecord& record, const PlatePicture& spec, Picture& picture);

// The part of the outline and of its surface.
inline constexpr int kOutlinePart = kDepthSection;
// Rows of dimensionLabels: sections have their own number, features FeatureTarget, the rest lies
// between.
inline constexpr int kOutlineNote = 14;  // thickness and cut depth
inline constexpr int kTypeNote = 15;     // what the feature type says

// Title of a section's editor and caption of its dimension in the picture.
const char16_t* PlateSectionWords(int section);

}  // namespace morva
