// An empty sketch on a canvas of 1040 by 600 pixels of the headless machine: at zoom 1 an inch
// is 100 pixels and the origin lies in the middle.
#pragma once

#include <cstdint>

#include "app/command_ids.h"
#include "cad/canvas/canvas.h"
#include "cad/model/sketch.h"
#include "platform/headless/headless.h"
#include "platform/window.h"

namespace scene {

inline void Stand() {
  headless::Reset(u"");
  morva::ResetSketch();
  morva::ResetCanvas();
  platform::MainWindowSpec window;
  window.place = {0, 0, 1200, 800};
  platform::MakeMainWindow(window);
  platform::ViewSpec view;
  view.id = morva::kViewCadCanvas;
  view.className = u"MorvaCustomShapeCanvas";
  platform::MakeView(view);
  platform::SetPlace(morva::kViewCadCanvas, {0, 0, 1040, 600});
}

inline void Put(std::int32_t type, double x, double y, double size, double size2, double angle) {
  morva::AppendSketchObject({type, 0, x, y, size, size2, angle});
}

}  // namespace scene
