// Cutting depth, feed and Safe Z of the live sketch, in its unit.
#pragma once

#include "library/motion_text.h"

namespace morva {

CutData ShownCutData();  // as the fields read, 0 for what is no number
void ShowCutData(const CutData& cut, int decimals = 6);

void RegisterCutData();

}  // namespace morva
