// How forms look: sizes, fonts and colours of their rows, one record a kind of place.
#pragma once

#include "app/palette.h"
#include "platform/geometry.h"

namespace morva {

enum class Labels : unsigned char { Beside, Above, None };

struct FormLook {
  short edge = 0;      // pixels left and right of the rows
  short top = 0;       // above the first row
  short gap = 4;       // between rows
  short keyGap = 4;    // between keys side by side
  short tightGap = 4;  // the least between rows that would else not fit
  short inset = 0;     // of fields and logs in their place, so that their frame lies inside it
  short fieldHeight = 26;
  short keyHeight = 26;
  short checkHeight = 22;
  short labelHeight = 18;  // where labels stand above
  short labelGap = 2;
  short headHeight = 24;
  short headAbove = 0;  // between the line and the words of a head
  short headGap = -1;   // below a head; below 0: as between rows
  short listRowHeight = 24;
  short fieldPercent = 46;  // of the width, where labels stand beside
  short labelWidth = 0;     // pixels of a label beside its field, 0: what fieldPercent leaves
  bool headLines = false;
  bool choiceLabels = true;  // else a drop-down takes the whole width and tells itself
  bool framesChoices = true;
  bool keysAtEnd = false;  // shares are pixels and the row ends at the right
  bool selectsAfterEnter = false;
  Labels labels = Labels::Above;
  platform::FontRole labelFont = platform::FontRole::Small;
  platform::FontRole fieldFont = platform::FontRole::Body;
  platform::FontRole keyFont = platform::FontRole::Small;
  platform::FontRole listFont = platform::FontRole::Small;
  platform::Colour labelColour = kMainText;
  platform::Colour noteColour = kMainText;
};

// Side panels that scroll: a label and its field share a line.
inline constexpr FormLook kSheetLook{.edge = 8,
                                     .headAbove = 6,
                                     .headGap = 2,
                                     .headLines = true,
                                     .choiceLabels = false,
                                     .selectsAfterEnter = true,
                                     .labels = Labels::Beside,
                                     .keyFont = platform::FontRole::Body,
                                     .noteColour = kDimText};
}  // namespace morva
