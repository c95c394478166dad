// Arcs of a block: by their centre or by their radius.
#include <cmath>

#include "simulator/control_frame.h"
#include "simulator/control_motion.h"

namespace morva {

namespace {

// What the control lets pass between the distances of start and end from the centre, and what is
// worth a word. Half a count of the last decimal place at each of the four numbers is rounding.
constexpr double kLetPassInches = 0.001;
constexpr double kLetPassMm = 0.01;

char CentreLetter(int axis) { return static_cast<char>('I' + axis); }

void RunByRadius(ControlRun& run, const ControlBlock& block, const Vec3& target, bool clockwise) {
  const PlaneAxes axes = AxesOf(run.modes.plane);
  const double r = LengthOf(run, block, 'R');
  const double du = target.of[axes.u] - run.at.of[axes.u];
  const double dv = target.of[axes.v] - run.at.of[axes.v];
  const double chord = std::hypot(du, dv);
  if (chord <= 0 || r == 0) {
    Report(run, chord <= 0 ? Finding::ArcFullByRadius : Finding::ArcRadiusSmall, r / run.unit);
    return FeedTo(run, target);
  }
  double square = r * r - chord * chord / 4;
  if (square < 0) {
    // Half the way may exceed R by the rounding of the numbers: then it is half a circle.
    const double rounding = (run.modes.metric ? kLetPassMm : kLetPassInches) * run.unit;
    if (chord / 2 - std::fabs(r) > rounding) {
      Report(run, Finding::ArcRadiusSmall, r / run.unit);
      return FeedTo(run, target);
    }
    square = 0;
  }
  // The root makes much of the last digits: near none it is half a circle.
  constexpr double kLastDigits = 1e-14;
  if (square < kLastDigits * r * r) square = 0;
  // The centre lies to the left of the way on a G03 below half a turn; R below 0 turns that round.
  const double side = (clockwise ? -1.0 : 1.0) * (r < 0 ? -1.0 : 1.0);
  const double height = std::sqrt(square) * side;
  const double u = (run.at.of[axes.u] + target.of[axes.u]) / 2 - dv / chord * height;
  const double v = (run.at.of[axes.v] + target.of[axes.v]) / 2 + du / chord * height;
  ArcTo(run, target, u, v, clockwise);
}

}  // namespace

void RunArc(ControlRun& run, const ControlBlock& block, const Vec3& target) {
  const bool clockwise = run.modes.motion == 2;
  const PlaneAxes axes = AxesOf(run.modes.plane);
  const char letterU = CentreLetter(axes.u);
  const char letterV = CentreLetter(axes.v);
  if (!block.Has(letterU) && !block.Has(letterV)) {
    if (block.Has('R')) return RunByRadius(run, block, target, clockwise);
    Report(run, Finding::ArcNoCentre);
    return FeedTo(run, target);
  }
  double u = run.at.of[axes.u];
  double v = run.at.of[axes.v];
  if (block.Has(letterU)) u += LengthOf(run, block, letterU);
  if (block.Has(letterV)) v += LengthOf(run, block, letterV);
  const double start = std::hypot(run.at.of[axes.u] - u, run.at.of[axes.v] - v);
  const double end = std::hypot(target.of[axes.u] - u, target.of[axes.v] - v);
  const double letPass = (run.modes.metric ? kLetPassMm : kLetPassInches) * run.unit;
  if (std::fabs(start - end) > letPass) {
    Report(run, Finding::ArcEndOff, std::fabs(start - end) / run.unit);
  }
  ArcTo(run, target, u, v, clockwise);
}

}  // namespace morva
