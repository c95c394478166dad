// What follows from the numbers of a plan: stepover, depths, passes, rows, circle. All functions
// take any plan, but the numbers mean something only for one that ValidateSkimPlan lets pass.
#pragma once

#include "skim/model/plan.h"

namespace morva {

// From row to row, and from turn to turn of a spiral.
double SkimStep(const SkimPlan& plan);
// The whole depth, by the plan's mode.
double SkimTotal(const SkimPlan& plan);
// How many passes the depth takes; the last one may be shallower. A rest below 1e-8 takes none.
// At most 2,147,483,647, 0 for no number.
int PassCount(const SkimPlan& plan);
// Removed below zTop when pass `pass`, from 1 on, is done.
double SkimRemoved(const SkimPlan& plan, int pass);
// Rows of a pass: the stock's height over the step, and of the alternating strategies its longer
// side. Not rounded. Up to two rows more are cut.
double RowEstimate(const SkimPlan& plan);
// The highest that the cutter goes, Z.
double SkimSafeZ(const SkimPlan& plan);

// Where rows along X end, and those along Y.
double SkimEntryX(const SkimPlan& plan);
double SkimExitX(const SkimPlan& plan);
double SkimEntryY(const SkimPlan& plan);
double SkimExitY(const SkimPlan& plan);

// The largest circle on the stock, which a spiral covers.
struct SkimCircle {
  double x = 0;
  double y = 0;
  double radius = 0;
};
SkimCircle CircleOfSkim(const SkimPlan& plan);

}  // namespace morva
