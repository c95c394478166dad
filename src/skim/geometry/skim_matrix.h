// The code matrix: how each setting of a plan lands in the code, a line each.
#pragma once

#include <string>

#include "skim/model/plan.h"

namespace morva {

// Lines joined by CR LF. For a plan that ValidateSkimPlan refuses: what to do first.
std::u16string SkimMatrixText(const SkimPlan& plan);
// What stands there while the form does not read.
std::u16string_view SkimMatrixInvalid();

}  // namespace morva
