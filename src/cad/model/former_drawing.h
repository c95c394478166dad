// What belongs to a drawing beside its sketch, kept with the undo step of one whose place a block
// took.
#pragma once

#include <cstdint>

#include "documents/companions.h"
#include "library/motion_text.h"

namespace morva {

struct FormerDrawing {
  CutData cut;
  char16_t name[kDrawingNameUnits] = {};
  std::int32_t block = 0;  // as in Drawing
  std::uint32_t blockHash = 0;
};

}  // namespace morva
