#include "skim/model/plan_measures.h"

#include <algorithm>
#include <limits>

namespace morva {

namespace {

constexpr double kRest = 0.00000001;  // of the depth that needs no pass of its own
constexpr double kPercent = 0.01;

// Cut off behind the point; what an int cannot hold is its largest, no number is 0.
int Truncated(double value) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  if (!(value > 0)) return 0;
  return value < kLargest ? static_cast<int>(value) : kLargest;
}

}  // namespace

double SkimStep(const SkimPlan& plan) { return plan.diameter * plan.stepoverPercent * kPercent; }

double SkimTotal(const SkimPlan& plan) {
  return plan.useTotalDepth ? plan.totalDepth : plan.passCount * plan.depthPerPass;
}

int PassCount(const SkimPlan& plan) {
  const double total = SkimTotal(plan);
  const int whole = Truncated(total / plan.depthPerPass);
  const bool rest = whole * plan.depthPerPass < total - kRest;
  return rest && whole < std::numeric_limits<int>::max() ? whole + 1 : whole;
}

double SkimRemoved(const SkimPlan& plan, int pass) {
  return std::min(pass * plan.depthPerPass, SkimTotal(plan));
}

double RowEstimate(const SkimPlan& plan) {
  const double width = plan.xMax - plan.xMin;
  const double height = plan.yMax - plan.yMin;
  return (IsAlternating(plan.strategy) ? std::max(width, height) : height) / SkimStep(plan);
}

double SkimSafeZ(const SkimPlan& plan) { return plan.zTop + plan.clearance; }

double SkimEntryX(const SkimPlan& plan) { return plan.xMin - plan.entry; }
double SkimExitX(const SkimPlan& plan) { return plan.xMax + plan.exit; }
double SkimEntryY(const SkimPlan& plan) { return plan.yMin - plan.entry; }
double SkimExitY(const SkimPlan& plan) { return plan.yMax + plan.exit; }

SkimCircle CircleOfSkim(const SkimPlan& plan) {
  const double width = plan.xMax - plan.xMin;
  const double height = plan.yMax - plan.yMin;
  return {(plan.xMin + plan.xMax) * 0.5, (plan.yMin + plan.yMax) * 0.5,
          std::min(width, height) * 0.5};
}

}  // namespace morva
