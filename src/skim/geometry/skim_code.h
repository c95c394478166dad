// The code of a skim: what goes into the program, what the review shows and the view draws.
#pragma once

#include <cstddef>

#include "skim/model/plan.h"
#include "text/code_writer.h"

namespace morva {

// Units that the code of the plan may have: more than it needs. 0 where ValidateSkimPlan refuses
// it.
std::size_t SkimProgramUnits(const SkimPlan& plan);
// Writes the code behind what `out` holds; it begins with a line end. The room of `out` is made
// first, at once, and its `most` set. False: ValidateSkimPlan refuses the plan, nothing is written.
bool BuildSkimProgram(const SkimPlan& plan, CodeWriter& out);

}  // namespace morva
