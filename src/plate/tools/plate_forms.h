// The two forms of the plate workspace as tables: the plate itself, and what is edited of it.
//
// The thirteen numbers of the plate stand in FormValues::numbers in the order of PlateValue, its
// lists in `choices` as shape, feature type and layout. Whoever needs them asks the plate itself,
// which follows the fields.
#pragma once

#include "forms/form.h"
#include "forms/sheet.h"

namespace morva {

extern const Sheet kPlateSheet;
extern const Form kPlateForm;

extern const Form kPlateEditForm;  // pages: PlatePage

}  // namespace morva
