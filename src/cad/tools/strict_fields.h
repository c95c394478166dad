// Numbers that drive geometry, out of the fields of the workspace: nothing but a number counts, so
// that "0,75" is never taken for 0.
#pragma once

#include "cad/model/cad_form.h"

namespace morva {

// The number of a field; without a text `value` stays. False: the text is no number; the status
// says so and the field has the keyboard.
bool TakeFieldNumber(int id, double& value);
// The numbers and choices of a page of the workspace's form, told as above; counts must be whole.
bool TakePage(int page, FormValues& values);
// Whether every length that the workspace would convert is a number or empty, told as above.
bool LengthsAreNumbers();

}  // namespace morva
