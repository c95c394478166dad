// What a field of the skim means on the stock, shown while it has the keyboard. Only for plans that
// ValidateSkimPlan lets pass.
#pragma once

#include <string>
#include <string_view>

#include "skim/model/plan.h"

namespace morva {

struct SkimMarker {
  double x = 0;  // plan units
  double y = 0;
  double z = 0;
};
// Where the field's number stands on the stock; the lower left corner on the surface where it
// stands nowhere.
SkimMarker SkimFieldMarker(const SkimPlan& plan, int field);
// One line: label, the field's text, a hint and the marker's Z.
std::u16string SkimFieldHelp(const SkimPlan& plan, int field, std::u16string_view text);

}  // namespace morva
