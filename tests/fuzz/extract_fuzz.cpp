// Any text through the extraction, against the plain interpreter, in both display units.
#include <cmath>
#include <string>

#include "fuzz/fuzz.h"
#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "support/reference_path.h"

namespace {

// Chords may differ in the last bits of square root and sine. A text whose arc or double lies
// within those bits of a bound could part the two; none is known.
bool Near(double a, double b, double size) { return std::fabs(a - b) <= 1e-9 * (1 + size); }

void Compare(const std::u16string& text, bool metric) {
  morva::ExtractToolpath(text, metric);
  const reference::Path wanted = reference::Interpret(text, metric);
  fuzz::Check(static_cast<std::size_t>(morva::path.count) == wanted.points.size(),
              "both give the same count of points");
  fuzz::Check(morva::pathFullAtLine == wanted.fullAtLine, "both are full at the same line");
  for (std::int32_t i = 0; i < morva::path.count; ++i) {
    const morva::MotionPoint& p = morva::path.points[i];
    const reference::Point& q = wanted.points[static_cast<std::size_t>(i)];
    const double size = std::fabs(q.x) + std::fabs(q.y) + std::fabs(q.z);
    fuzz::Check(Near(p.x, q.x, size) && Near(p.y, q.y, size) && Near(p.z, q.z, size),
                "both give the same positions");
    fuzz::Check(p.rapid == q.rapid && p.jump == q.jump, "both give the same kinds of move");
    fuzz::Check(p.sourceLine == q.sourceLine && p.tool == q.tool,
                "both give the same lines and tools");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  Compare(text, false);
  Compare(text, true);
  return 0;
}
