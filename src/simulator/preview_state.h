// What a builder's preview has said of itself (preview.h), as the view reads it.
#pragma once

#include <cstdint>
#include <string>

#include "simulator/motion_path.h"

namespace morva {

// Lengths and places in display units.
struct PreviewState {
  bool stands = false;  // between its first showing and its end
  const char16_t* stockWords = u"";
  std::int32_t tool = 0;
  double diameter = 0;
  bool coverage = false;
  bool levels = false;
  bool lags = false;
  bool marked = false;  // a place is pointed at
  double markerX = 0, markerY = 0, markerZ = 0;
  std::u16string markerWords;
};
extern PreviewState previewState;
// None stands, and nothing stands around it.
void ForgetPreview();

// A preview stands, and the view shows it.
bool PreviewIsShown();
// The shown path is cut level by level, so that one level may be shown alone.
bool HasLevels();
// Whether coverage of the shown path can be painted: somebody told its cutter.
bool HasCoverage();
// The tool on the way to a point of the shown path: the point's, unless the preview names one.
std::int32_t ToolOf(const MotionPoint& point);

}  // namespace morva
