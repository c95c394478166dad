// Arcs of a block: by their centre or by their radius.
#include <algorithm>
#include <cmath>

#include "simulator/control_frame.h"
#include "simulator/control_motion.h"
#include "text/codetext.h"

namespace morva {

namespace {

// What the control lets pass between the distances of start and end from the centre.
constexpr double kLetPassInches = 0.001;
constexpr double kLetPassMm = 0.01;

// Digits behind the point, the most that a place or centre of the block is written with.
int MostPlaces(const ControlRun& run) {
  const ControlPlace& start = run.blockStart;
  const std::u16string_view text = run.texts[static_cast<std::size_t>(start.text)].text;
  int most = 0;
  int places = -1;  // of the number under the walk, -1 before its point
  bool comment = false;
  bool length = false;
  for (std::size_t at = start.at; at < text.size(); ++at) {
    const char16_t c = text[at];
    if (c == 0 || c == u'\n' || c == u'\r' || c == u';') break;
    if (c == u'(' || c == u')') comment = c == u'(';
    if (comment) continue;
    const char16_t upper = FoldUpper(c);
    if (upper >= u'A' && upper <= u'Z') {
      length = (upper >= u'I' && upper <= u'K') || (upper >= u'X' && upper <= u'Z');
      places = -1;
    } else if (c == u'.') {
      places = 0;
    } else if (IsDigit(c) && places >= 0) {
      most = length ? std::max(most, ++places) : most;
    }
  }
  return most;
}

// What the rounding of the written numbers alone may make of an arc's end: one and a half counts of
// their last place, where that is the last but one of the control's.
double LetPass(const ControlRun& run) {
  const bool coarse = MostPlaces(run) <= (run.modes.metric ? 2 : 3);
  const double base = run.modes.metric ? kLetPassMm : kLetPassInches;
  return (coarse ? 1.5 * base : base) * run.unit;
}

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
  const double least = (run.modes.metric ? kLetPassMm : kLetPassInches) * run.unit;
  if (std::fabs(start - end) > least && std::fabs(start - end) > LetPass(run)) {
    Report(run, Finding::ArcEndOff, std::fabs(start - end) / run.unit);
  }
  ArcTo(run, target, u, v, clockwise);
}

}  // namespace morva
