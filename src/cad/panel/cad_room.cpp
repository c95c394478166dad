#include "cad/panel/cad_room.h"

#include "app/commands.h"
#include "cad/canvas/canvas.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawings.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch.h"
#include "cad/panel/cad_commands.h"
#include "cad/panel/cad_surface.h"
#include "cad/panel/drawing_tabs.h"
#include "cad/panel/pattern_form.h"
#include "cad/panel/sketch_code.h"
#include "cad/panel/sketch_panels.h"
#include "cad/panel/wanted.h"
#include "cad/panel/workspace.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/edits.h"
#include "cad/tools/flyout.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/patterns.h"
#include "cad/tools/select_drag.h"
#include "cad/tools/tool_keys.h"
#include "documents/tab_models.h"

namespace morva {

void RegisterCad() {
  AddCommands(CadCommands());
  RegisterCadSurface();
  RegisterSketchCommands();
  liveModels.cadWindowExists = CadWindowExists;
  RegisterDrawings();
  RegisterDrawingTabs();
  RegisterCanvas();
  RegisterToolKeys();
  RegisterSelectDrag();
  RegisterEdits();
  RegisterGeometryTools();
  RegisterDimensions();
  RegisterPatterns();
  RegisterPatternForm();
  RegisterSketchCode();
  RegisterWanted();
}

void ResetCad() {
  ForgetWanted();
  ResetDrawingTabs();
  ResetCanvas();
  ResetDrawTools();
  ResetFlyouts();
  ResetSelectDrag();
  ResetEdits();
  ResetGeometryTools();
  ResetDimensions();
  ResetPatternForm();
  ResetSketch();
  ResetHintLine();
  cadHooks = CadHooks();
  ResetWorkspace();
}

}  // namespace morva
