#include "cad/workspace.h"

#include "cad/canvas.h"
#include "cad/dimensions.h"
#include "cad/draw_tools.h"
#include "cad/drawings.h"
#include "cad/edits.h"
#include "cad/geometry_tools.h"
#include "cad/patterns.h"
#include "cad/select_drag.h"
#include "cad/sketch.h"
#include "cad/sketch_code.h"

namespace morva {

bool CadWindowExists() { return false; }
void ShowCadWorkspace(const platform::Rect&) {}
void HideCadWorkspace() {}
void PlaceCadWorkspace(const platform::Rect&) {}
void RefreshCadPanel() {}
void RefreshCadKeys() {}

void RegisterCad() {
  RegisterSketchCommands();
  RegisterDrawings();
  RegisterCanvas();
  RegisterDrawTools();
  RegisterEdits();
  RegisterGeometryTools();
  RegisterDimensions();
  RegisterPatterns();
  RegisterSketchCode();
}

void ResetCad() {
  ResetDrawings();
  ResetCanvas();
  ResetDrawTools();
  ResetSelectDrag();
  ResetEdits();
  ResetGeometryTools();
  ResetDimensions();
  ResetPatterns();
  ResetSketch();
}

}  // namespace morva
