#include "simulator/control_frame.h"

#include "simulator/motion_path.h"

namespace morva {

namespace {

// Where a part's zero stands on the table while no offset says so: in the middle, a third of Z's
// travel above the bottom.
constexpr double kPresumed[3] = {-0.5, -0.5, -0.6};

}  // namespace

PlaneAxes AxesOf(int plane) {
  if (plane == 18) return {2, 0, 1};
  if (plane == 19) return {1, 2, 0};
  return {0, 1, 2};
}

Vec3 ShownOf(const ControlRun& run, const Vec3& program) {
  const ControlFrame& frame = run.frame;
  Vec3 p = program;
  if (frame.shiftsOnly) {
    for (int axis = 0; axis < 3; ++axis) p.of[axis] += frame.shift.of[axis];
    return p;
  }
  if (frame.scale != 1) {
    for (int axis = 0; axis < 3; ++axis) {
      const double centre = frame.scaleCentre.of[axis];
      p.of[axis] = centre + (p.of[axis] - centre) * frame.scale;
    }
  }
  if (frame.turned) {
    const double u = p.of[frame.turnU] - frame.turnCentreU;
    const double v = p.of[frame.turnV] - frame.turnCentreV;
    p.of[frame.turnU] = frame.turnCentreU + u * frame.turnCos - v * frame.turnSin;
    p.of[frame.turnV] = frame.turnCentreV + u * frame.turnSin + v * frame.turnCos;
  }
  for (int axis = 0; axis < 3; ++axis) {
    if (frame.mirror[axis]) p.of[axis] = -p.of[axis];
    p.of[axis] += frame.shift.of[axis];
  }
  return p;
}

Vec3 ProgramOf(const ControlRun& run, const Vec3& shown) {
  const ControlFrame& frame = run.frame;
  Vec3 p = shown;
  for (int axis = 0; axis < 3; ++axis) {
    p.of[axis] -= frame.shift.of[axis];
    if (frame.mirror[axis]) p.of[axis] = -p.of[axis];
  }
  if (frame.turned) {
    const double u = p.of[frame.turnU] - frame.turnCentreU;
    const double v = p.of[frame.turnV] - frame.turnCentreV;
    p.of[frame.turnU] = frame.turnCentreU + u * frame.turnCos + v * frame.turnSin;
    p.of[frame.turnV] = frame.turnCentreV - u * frame.turnSin + v * frame.turnCos;
  }
  if (frame.scale != 1) {
    for (int axis = 0; axis < 3; ++axis) {
      const double centre = frame.scaleCentre.of[axis];
      p.of[axis] = centre + (p.of[axis] - centre) / frame.scale;
    }
  }
  return p;
}

bool IsReversed(const ControlRun& run, int plane) {
  const PlaneAxes axes = AxesOf(plane);
  return run.frame.mirror[axes.u] != run.frame.mirror[axes.v];
}

void SettleFrame(ControlRun& run) {
  ControlFrame& frame = run.frame;
  const double* work = run.table.work[run.modes.workRow];
  const bool set = WorkOffsetIsSet(run, run.modes.workRow);
  run.offsetSet = set;
  run.offsetMissing = !set && AnyWorkOffsetIsSet(run);
  frame.shiftsOnly =
      frame.scale == 1 && !frame.turned && !frame.mirror[0] && !frame.mirror[1] && !frame.mirror[2];
  for (int axis = 0; axis < 3; ++axis) {
    // A further offset that is not set is drawn where the first one is.
    const double offset = set ? work[axis] * run.perInch - run.zero.of[axis] : 0;
    const double local = run.table.work[kLocalZeroRow][axis] * run.perInch;
    frame.shift.of[axis] = offset + frame.g92.of[axis] + local;
  }
  run.at = ProgramOf(run, run.shown);
}

void PlaceZero(ControlRun& run, int workRow) {
  const bool set = WorkOffsetIsSet(run, workRow);
  Vec3 by;
  for (int axis = 0; axis < 3; ++axis) {
    const double inches =
        set ? run.table.work[workRow][axis] : run.table.travel[axis] * kPresumed[axis];
    by.of[axis] = run.zero.of[axis] - inches * run.perInch;
    run.zero.of[axis] = inches * run.perInch;
    run.shown.of[axis] += by.of[axis];
    run.reached.of[axis] += by.of[axis];
  }
  ShiftPath(run.track->path, by.of[0], by.of[1], by.of[2]);
  SettleFrame(run);
}

bool AnyWorkOffsetIsSet(const ControlRun& run) {
  for (int row = kFirstWorkRow; row < kWorkRows; ++row) {
    if (WorkOffsetIsSet(run, row)) return true;
  }
  return false;
}

bool WorkOffsetIsSet(const ControlRun& run, int workRow) {
  const double* work = run.table.work[workRow];
  return work[0] != 0 || work[1] != 0 || work[2] != 0;
}

}  // namespace morva
