#include "cad/canvas/canvas.h"

#include "app/command_ids.h"
#include "app/panels.h"
#include "cad/canvas/canvas_model.h"
#include "cad/canvas/canvas_paint.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"

namespace morva {

void RegisterCanvas() {
  Handlers handlers;
  handlers.id = kViewCadCanvas;
  handlers.paint = PaintCanvas;
  handlers.pointer = CanvasPointer;
  handlers.timer = CanvasTimer;
  RegisterHandlers(handlers);
  RegisterCanvasKeys();
  RegisterModelView();
}

void ResetCanvas() {
  ResetCanvasView();
  ResetCanvasPointer();
  ResetModelView();
}

}  // namespace morva
