// Cutting depth, feed and Safe Z of the live sketch, in its unit.
#pragma once

#include "library/motion_text.h"

namespace morva {

// From and to their places in FormValues and in a record.
CutData CutDataOf(const double* numbers);
void PutCutData(const CutData& cut, double* numbers);

CutData StartCutData(bool metric);  // of a new drawing: what the fields start with
CutData ShownCutData();             // as the fields read, 0 for what is no number
void ShowCutData(const CutData& cut, int decimals = 6);

}  // namespace morva
