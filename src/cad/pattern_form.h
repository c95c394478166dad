// The full pattern form's part in the unit switch; the form itself stands in patterns.h.
#pragma once

namespace morva {

// The form's lengths and feeds follow the sketch's unit.
void RegisterPatternLengths();

}  // namespace morva
