// The picture of a plate, for the screen and for paper, drawn from the same places as its code.
//
// Parts of the picture are targets (plate.h): a section for the outline and for a dimension, or a
// feature. The place number of a label is its row in the plate's dimensionLabels.
#pragma once

#include "forms/picture.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"

namespace morva {

struct PlatePicture {
  int selected = -1;       // the feature that is drawn as selected, and gets its own dimensions
  bool dimensions = true;  // with dimension lines and labels
  bool hidden = true;      // hidden features are drawn, dim; paper leaves them out by itself
};

// Fills the picture. A plate that its check refuses is drawn as far as it can be.
void DrawPlate(const PlateRecord& record, const PlatePicture& spec, Picture& picture);

// The part of the outline and of its surface.
inline constexpr int kOutlinePart = kDepthSection;
// Rows of dimensionLabels beside those of sections and features, which have their own numbers.
inline constexpr int kCutDepthNote = 14;
inline constexpr int kTypeNote = 15;        // what cannot be told by a number: mixed, custom
inline constexpr int kSelectedAcross = 16;  // the place of the selected feature
inline constexpr int kSelectedUpright = 17;
inline constexpr int kSelectedNote = 18;  // its size or shape, and its depth

// Title of a section's editor; empty for another number.
const char16_t* PlateSectionWords(int section);

// Dimensions and labels alone, on top of a picture of the plate; for DrawPlate.
void AddPlateDimensions(const PlateRecord& record, const PlateNumbers& numbers, int selected,
                        Picture& picture);

}  // namespace morva
