// Layers and modes of the toolpath view, one set for all paths.
#pragma once

namespace morva {

struct ViewSwitches {
  bool showRapids = false;
  bool showOverlap = false;
  bool showDrawingPaths = true;
  bool showCutSurface = true;
  bool skimCurrentDepthOnly = true;
  bool shadeByDepth = false;   // kept in the settings
  bool machineMotion = false;  // as is this: the program as the control runs it
  bool playByTime = false;     // and this: of the machine's motion
  bool showExtents = false;
  bool measureMode = false;
  bool panMode = false;
};
extern ViewSwitches switches;

// A row of the menu of layers, by its id: it goes on or off, or all go to the clean view. Another
// id does nothing.
void TakeLayerPick(int id);
// Clears the picks of every path: the mode is one for all.
void ToggleMeasure();
void ToggleExtents();
void TogglePan();
void ShadeByDepth(bool on);
void ShowMachineMotion(bool on);
void PlayByTime(bool on);
void ResetSwitches();

}  // namespace morva
