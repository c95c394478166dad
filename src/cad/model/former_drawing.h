// What belongs to a drawing beside its sketch, kept with the undo step of one whose place a block
// took.
#pragma once

#include "documents/companions.h"
#include "library/motion_text.h"

namespace morva {

struct FormerDrawing {
  CutData cut;
  char16_t name[kDrawingNameUnits] = {};
  KnownBlock block = {};
};

}  // namespace morva
