// The tool at the head of the shown path: where it stands, what it is, its picture.
#pragma once

#include "platform/canvas.h"
#include "simulator/cutter.h"
#include "simulator/view.h"

namespace morva {

struct ToolModel {
  bool shown = false;  // the path has a head, and the head's tool is described
  Cutter cutter;
  double x = 0, y = 0, z = 0;  // of its tip, display units
};
ToolModel ToolModelNow();

// The cutter and its shank with smoothed edges; nothing where no model is shown.
void PaintToolModel(platform::Canvas& canvas, const Projection& p);

}  // namespace morva
