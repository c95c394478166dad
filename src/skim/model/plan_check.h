// The reading of the skim's form into a plan, and what a plan must keep to.
#pragma once

#include <string>

#include "skim/model/plan.h"

namespace morva {

// The texts of the fields by SkimField, and the selected rows of the two lists.
struct SkimTexts {
  std::u16string fields[kSkimFields];
  std::int32_t strategy = 0;
  std::int32_t depthRow = 0;  // 1: until the total removal is reached
};

// What a plan says in the form.
SkimTexts TextsOf(const SkimPlan& plan);

// Why the texts are no plan.
struct SkimRefusal {
  int field = 0;                // the first that does not read
  const char16_t* words = u"";  // empty: nothing is said, the field gets the keyboard
};

// Reads the texts by a strict rule: a sign or none, digits, at most one point, blanks behind, size
// below 100000; tool and work offset whole. False: `plan` stays, `refusal` says why. Unit,
// thickness and centerline stay in any case. What the numbers mean is not looked at.
bool ReadSkimFields(const SkimTexts& texts, SkimPlan& plan, SkimRefusal& refusal);

// What must be mended before code can be made of a plan.
inline constexpr int kNoSkimField = -1;
struct SkimFault {
  const char16_t* words = u"";  // empty: nothing, code can be made
  int field = kNoSkimField;     // a SkimField to mend it in; kNoSkimField: the list of strategies
};
SkimFault FaultOfSkimPlan(const SkimPlan& plan);
// Whether code can be made of the plan. False: `message` says what must be mended first.
bool ValidateSkimPlan(const SkimPlan& plan, const char16_t*& message);

}  // namespace morva
