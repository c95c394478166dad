#include "simulator/view_switches.h"

#include "app/command_ids.h"
#include "platform/window.h"
#include "simulator/shown_path.h"

namespace morva {

ViewSwitches switches;

void TakeLayerPick(int id) {
  switch (id) {
    case kIdLayerRapids:
      switches.showRapids = !switches.showRapids;
      break;
    case kIdLayerOverlap:
      switches.showOverlap = !switches.showOverlap;
      break;
    case kIdLayerDrawing:
      switches.showDrawingPaths = !switches.showDrawingPaths;
      break;
    case kIdLayerCutSurface:
      switches.showCutSurface = !switches.showCutSurface;
      break;
    case kIdLayerClean:
      switches.showRapids = false;
      switches.showOverlap = false;
      switches.showCutSurface = false;
      switches.showDrawingPaths = true;
      break;
    case kIdLayerSkimDepth:
      switches.skimCurrentDepthOnly = !switches.skimCurrentDepthOnly;
      break;
    case kIdLayerDepthShade:
      ShadeByDepth(!switches.shadeByDepth);
      break;
    case kIdLayerPlayByTime:
      PlayByTime(!switches.playByTime);
      break;
    default:
      break;
  }
}

void ToggleMeasure() {
  switches.measureMode = !switches.measureMode;
  ForgetMeasurePicks();
  platform::Repaint(kViewToolpath);
}

void ToggleExtents() {
  switches.showExtents = !switches.showExtents;
  platform::Repaint(kViewToolpath);
}

void TogglePan() {
  switches.panMode = !switches.panMode;
  platform::Repaint(kViewToolpath);
}

void ShadeByDepth(bool on) { switches.shadeByDepth = on; }

void ShowMachineMotion(bool on) { switches.machineMotion = on; }

void PlayByTime(bool on) { switches.playByTime = on; }

void ResetSwitches() { switches = ViewSwitches{}; }

}  // namespace morva
