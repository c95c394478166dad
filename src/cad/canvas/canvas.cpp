#include "cad/canvas/canvas.h"

#include "app/command_ids.h"
#include "app/panels.h"
#include "cad/canvas/canvas_model.h"
#include "cad/canvas/canvas_paint.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/canvas/key_cross.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/tools/draw_tools.h"
#include "text/codetext.h"

namespace morva {

namespace {

// What stands on the canvas, for those who do not see it.
void TellDrawing(platform::ViewValue& value) {
  const std::int32_t count = sketch.objectCount;
  value.words = IntegerText(count) + (count == 1 ? u" object" : u" objects");
  if (HasSketchSelection()) {
    value.words += u", selected " + IntegerText(sketch.selected + 1) + u"  ";
    value.words += SketchTypeName(sketch.objects[sketch.selected].type);
  }
  double x = 0;
  double y = 0;
  if (CrosshairShown() && KeyCross(x, y)) value.words += u", cross  " + CursorWords(x, y);
}

}  // namespace

void RegisterCanvas() {
  Handlers handlers;
  handlers.id = kViewCadCanvas;
  handlers.paint = PaintCanvas;
  handlers.value = TellDrawing;
  handlers.pointer = CanvasPointer;
  handlers.timer = CanvasTimer;
  handlers.keys = CanvasKeys();
  RegisterHandlers(handlers);
  Handlers tool;
  tool.id = kViewCadCanvas;
  tool.keys = DrawToolKeys();
  RegisterHandlers(tool);
  RegisterCanvasKeys();
  RegisterModelView();
}

void ResetCanvas() {
  ResetCanvasView();
  ResetCanvasPointer();
  ResetModelView();
}

}  // namespace morva
