#include "cad/cad_commands.h"

#include "app/command_ids.h"

namespace morva {

namespace {

constexpr Command kCommands[] = {
    // The tool panels.
    {kIdCadQuickCircular, u"Apply circular pattern",
     u"Repeat the selected object around the center"},
    {kIdCadQuickGrid, u"Apply rectangular pattern",
     u"Repeat the selected object in columns and rows"},
    {kIdCadPatternSource, u"Source: shape library",
     u"Repeat a shape of this size, or the selected object"},
    {kIdPickDirection1, u"\u2197 Pick edge", u"Take the direction of the columns from the drawing",
     u"Pick edge for direction 1"},
    {kIdReverseDirection1, u"Reverse", u"Turn the direction of the columns round",
     u"Reverse direction 1"},
    {kIdPickDirection2, u"\u2197 Pick edge", u"Take the direction of the rows from the drawing",
     u"Pick edge for direction 2"},
    {kIdReverseDirection2, u"Reverse", u"Turn the direction of the rows round",
     u"Reverse direction 2"},
    {kIdCadCreatePattern, u"CREATE SKETCH PATTERN",
     u"Lay out the pattern as sketch geometry (Enter)"},
    {kIdCadApplyScale, u"Apply scale", u"Scale the selected part"},
    {kIdCadCreatePolygon, u"Create polygon sides", u"Create the polygon from these numbers"},
    {kIdCadPickPivot, u"Pick pivot on drawing", u"Click the pivot on the canvas"},
    {kIdCadApplyRevolve, u"Apply revolve", u"Turn or copy the selected object"},
    {kIdCadApplyDimension, u"Apply dimension (Enter)", u"Resize the selected object to this value"},
    {kIdCadApplyThickness, u"Preview 3D", u"Show the sketch as a wireframe",
     u"Preview 3D with this thickness"},
    {kIdCadReturnTo2D, u"Return to 2D", u"Back to drawing (Esc)"},

    // The selected geometry and the drawing as a whole.
    {kIdCadApply, u"Apply", u"Write these numbers to the selected object (Enter)"},
    {kIdCadDuplicate, u"Duplicate", u"A copy beside the selected object"},
    {kIdCadDelete, u"Delete", u"Delete the selected part (Delete)"},
    {kIdCadHide, u"Hide / show", u"Hide or show the selected part"},
    {kIdCadLock, u"Lock / unlock", u"Keep the selected part from every edit"},
    {kIdCadExtend, u"Extend", u"Grow the selected object by the amount"},
    {kIdCadTrim, u"Trim", u"Shrink the selected object by the amount"},
    {kIdCadSplit, u"Split", u"Cut the selected line at its midpoint"},
    {kIdCadSaveShape, u"Save shape", u"Save this drawing as a reusable shape"},
    {kIdCadClear, u"Clear all", u"Empty this drawing (Undo restores it)"},
};

}  // namespace

std::span<const Command> CadCommands() { return kCommands; }

}  // namespace morva
