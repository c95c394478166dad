#include "skim/tools/skim_centerline.h"

#include "app/hooks.h"
#include "library/wanted_drawing.h"
#include "skim/tools/skim_fields.h"

namespace morva {

void DrawSkimPath() {
  const WantedDrawing wanted{.name = u"Skim centerline",
                             .hint =
                                 u"Draw the cutter centerline with line segments. Return "
                                 u"accepts the path. Separate strokes retract safely.",
                             .full = u"A free CAD drawing tab is needed for the skim path."};
  (void)wanted;
  ShowSkimChoices();
}

}  // namespace morva
