#include "cad/drawings.h"

namespace morva {

void SelectDrawingTab(int) {}
void AddDrawingTab() {}
void RenameDrawingTab() {}
void RefreshDrawingTabs() {}
void SaveLiveDrawing() {}
void LoadSketchForProgram() {}
bool WriteSketchSettings(FeatureSettings&) { return false; }
bool OpenSketchBlock(const FeatureSettings&) { return false; }
void RegisterDrawings() {}
void ResetDrawings() {}

}  // namespace morva
