#include "simulator/extract.h"

#include "simulator/feature_lines.h"
#include "simulator/motion_run.h"
#include "simulator/motion_scan.h"

namespace morva {

namespace {

// One run behind the points that stand in the table already, from the start state: at the
// origin, absolute, rapid, tool 0. With `arrives` no line leads into its first point.
void Run(MotionPath& out, std::u16string_view text, const ExtractOptions& options, bool arrives) {
  ++out.generation;
  motionRun = MotionRun{};
  motionRun.out = &out;
  motionRun.first = out.count;
  motionRun.dropsLine = options.dropsLine;
  if (!motionRun.dropsLine && options.filtered && StartLineFilter()) {
    motionRun.dropsLine = LineIsDropped;
  }
  motionRun.jump = arrives;
  AddMotionPoint(0.0, 0.0, 0.0, true, 0);
  ScanMotion(text, options.metric);
  EndMotionRun();
}

}  // namespace

void ExtractInto(MotionPath& out, std::u16string_view text, const ExtractOptions& options) {
  out.count = 0;
  out.fullAtLine = -1;
  out.notes = PathNotes{};
  Run(out, text, options, false);
}

void ExtractBehind(MotionPath& out, std::u16string_view text, const ExtractOptions& options) {
  Run(out, text, options, true);
}

void AddPolyline(MotionPath& out, const double* xs, const double* ys, int count) {
  ++out.generation;
  motionRun = MotionRun{};
  motionRun.out = &out;
  motionRun.first = out.count;
  motionRun.jump = true;
  for (int i = 0; i < count; ++i) AddMotionPoint(xs[i], ys[i], 0.0, false, -1 - i);
  EndMotionRun();
}

}  // namespace morva
