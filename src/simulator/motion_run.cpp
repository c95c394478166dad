#include "simulator/motion_run.h"

#include <cmath>

namespace morva {

MotionRun motionRun;

void EndMotionRun() { motionRun = MotionRun{}; }

bool RunDropsLine(std::int32_t line) { return motionRun.dropsLine && motionRun.dropsLine(line); }

void NoteRunLine(PathNote kind, std::int32_t line) { NoteLine(motionRun.out->notes, kind, line); }

void AddMotionPoint(double x, double y, double z, bool rapid, std::int32_t sourceLine) {
  if (RunDropsLine(sourceLine)) {
    motionRun.jump = true;
    return;
  }
  MotionPath& out = *motionRun.out;
  if (out.count >= kMaxMotionPoints) {
    if (out.fullAtLine < 0) out.fullAtLine = sourceLine;
    return;
  }
  if (out.count > motionRun.first) {
    constexpr double kSame = 1e-6;
    const MotionPoint& last = out.points[out.count - 1];
    if (std::fabs(x - last.x) <= kSame && std::fabs(y - last.y) <= kSame &&
        std::fabs(z - last.z) <= kSame) {
      return;
    }
  }
  MotionPoint& point = out.points[out.count++];
  point.x = x;
  point.y = y;
  point.z = z;
  point.rapid = rapid;
  point.sourceLine = sourceLine;
  point.jump = motionRun.jump;
  point.tool = motionRun.tool;
  motionRun.jump = false;
}

}  // namespace morva
