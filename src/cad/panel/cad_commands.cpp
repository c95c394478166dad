#include "cad/panel/cad_commands.h"

#include "app/command_ids.h"
#include "app/surfaces.h"
#include "cad/model/cad_chords.h"
#include "cad/panel/workspace_strip.h"

namespace morva {

namespace {

// A key that shows whether its tool, panel or setting is on.
constexpr Command Tool(int id, const char16_t* words, const char16_t* help,
                       const char16_t* name = u"") {
  return {
      .id = id, .words = words, .help = help, .name = name, .on = CadKeyIsOn, .told = kToldChecked};
}

constexpr Command kCommands[] = {
    {.id = kIdSurfaceCad, .words = u"CAD", .help = u"CAD workspace", .on = IsSurfaceKeyOn},

    // The tool strip.
    Tool(kIdCadSelect, u"Select", u"Select, move and reshape geometry"),
    Tool(kIdCadLine, u"Line", u"Line by two points (Down: more ways)"),
    Tool(kIdCadRectangle, u"Rectangle", u"Rectangle by two corners (Down: more ways)"),
    Tool(kIdCadCircle, u"Circle", u"Circle by center and radius (Down: more ways)"),
    Tool(kIdCadSlot, u"Slot", u"Slot by its centerline (Down: more ways)"),
    {.id = kIdCadCircularPanel,
     .words = u"Circular",
     .help = u"Circular pattern of the selected object",
     .menuWords = u"Circular pattern...",
     .on = CadKeyIsOn,
     .told = kToldChecked},
    {.id = kIdCadGridPanel,
     .words = u"Grid array",
     .help = u"Rectangular pattern of the selected object",
     .menuWords = u"Rectangular pattern...",
     .on = CadKeyIsOn,
     .told = kToldChecked},
    {.id = kIdCadCopy,
     .words = u"Copy",
     .help = u"Copy the selected part ({})",
     .chord = CtrlKey(kDrawingChords, 'C')},
    {.id = kIdCadCut,
     .words = u"Cut",
     .help = u"Cut the selected part ({})",
     .chord = CtrlKey(kDrawingChords, 'X')},
    {.id = kIdCadPaste,
     .words = u"Paste",
     .help = u"Paste beside the original ({})",
     .chord = CtrlKey(kDrawingChords, 'V')},
    {.id = kIdCadScale,
     .words = u"Scale",
     .help = u"Scale dimensions around the selected object's anchor.",
     .menuWords = u"Scale...",
     .hint = Hint::Help,
     .on = CadKeyIsOn,
     .told = kToldChecked},
    {.id = kIdCadUndo,
     .words = u"Undo",
     .help = u"Undo the last change ({})",
     .chord = CtrlKey(kDrawingChords, 'Z')},
    Tool(kIdCadCutData, u"Cut data", u"Cutting depth, feed and Safe Z"),
    {.id = kIdCadGenerate,
     .words = u"Generate",
     .help = u"Generate or update the current sketch in the active program.",
     .wordsOn = u"Update",  // while a sketch is under edit
     .hint = Hint::Help},
    {.id = kIdCadInch,
     .words = u"INCH",
     .help = u"Drawing units: inch",
     .wordsOn = u"INCH *",
     .on = CadKeyIsOn,
     .told = kToldChecked | kToldInWords},
    {.id = kIdCadMm,
     .words = u"MM",
     .help = u"Drawing units: millimeter",
     .wordsOn = u"MM *",
     .on = CadKeyIsOn,
     .told = kToldChecked | kToldInWords},
    {.id = kIdCadSnap,
     .words = u"Snap OFF",
     .help = u"Snap to geometry and grid ({}; hold Alt to bypass)",
     .wordsOn = u"Snap ON",
     .on = CadKeyIsOn,
     .told = kToldChecked | kToldInWords,
     .chord = FunctionKey(kCadChords, 8)},
    Tool(kIdCadPolygon, u"Polygon", u"Regular polygon of closed lines"),
    Tool(kIdCadRevolve, u"Revolve", u"Turn or copy the selected object around a pivot"),
    Tool(kIdCadJoin, u"Join", u"Let the selected line and another meet"),
    Tool(kIdCadTrimAt, u"Trim at", u"Remove the section under the pointer"),
    Tool(kIdCadTangent, u"Tangent", u"Let the selected line touch a circle"),
    Tool(kIdCadWorkAxis, u"Work axis", u"Construction axis; never cut"),
    Tool(kIdCadPoint, u"Point", u"Construction point; never cut"),
    {.id = kIdCadCancel,
     .words = u"Cancel",
     .help = u"Give up the tool in hand ({})",
     .chord = PlainKey(kDrawingChords, platform::kKeyEscape)},
    Tool(kIdCadDimension, u"Dimension", u"Change sizes by their labels (Down: measure)"),
    Tool(kIdCadPan, u"Pan", u"Left button moves the drawing; the middle one always does"),
    {.id = kIdCadFit,
     .words = u"Fit",
     .help = u"Show the whole drawing",
     .chord = PlainKey(kCanvasChords, platform::kKeyHome)},
    Tool(kIdCadGrid, u"Grid", u"Grid on or off"),
    Tool(kIdCadThickness, u"Preview 3D", u"Wireframe with a thickness"),

    // The ways of a tool, below its key.
    {kIdMethodLine, u"Line \u2014 two points"},
    {kIdMethodLineTangent, u"Line \u2014 tangent to circle"},
    {kIdMethodRectangle, u"Rectangle \u2014 two corners"},
    {kIdMethodRectangleCentre, u"Rectangle \u2014 center and corner"},
    {kIdMethodRectangleThree, u"Rectangle \u2014 three points (rotated)"},
    {kIdMethodCircleRadius, u"Circle \u2014 center and radius"},
    {kIdMethodCircleDiameter, u"Circle \u2014 two diameter endpoints"},
    {kIdMethodCircleThree, u"Circle \u2014 three perimeter points"},
    {kIdMethodCircleOnLine, u"Circle \u2014 tangent to line + center"},
    {kIdMethodCircleOnCircle, u"Circle \u2014 tangent to circle + center"},
    {kIdMethodSlotDrag, u"Slot \u2014 drag with preset width"},
    {kIdMethodSlotPoints, u"Slot \u2014 centerline endpoints + width point"},
    {kIdMethodDimension, u"Dimension \u2014 edit object size"},
    {kIdMethodMeasure, u"Measure \u2014 point-to-point distance"},

    // Drawings, lists, and what floats over the canvas.
    {.id = kIdDrawingFirst,
     .help = u"Drawing of this program",
     .cutInside = true,  // "Drawing 1" to "Drawing 8" in narrow keys
     .last = kIdDrawingLast},
    {kIdDrawingAdd, u"+", u"New drawing in this program", u"New drawing"},
    {kIdDrawingRename, u"Rename", u"Name this drawing; press again to keep", u"Rename drawing"},
    {kIdCadCreateTyped, u"Create (Enter)", u"Create the object with these sizes"},
    {.id = kIdCadOperations,
     .hintWords = u"Operations: select geometry to edit. Right-click for copy, scale, visibility "
                  u"and locks."},
    {.id = kIdCadStatus, .hint = Hint::Quiet, .last = kIdCadHint},

    // The tool panels.
    {kIdCadQuickCircular, u"Apply circular pattern",
     u"Repeat the selected object around the center"},
    {kIdCadQuickGrid, u"Apply rectangular pattern",
     u"Repeat the selected object in columns and rows"},
    {.id = kIdCadPatternSource,
     .words = u"Source: shape library",
     .help = u"Repeat a shape of this size, or the selected object",
     .wordsOn = u"Source: selected geometry"},
    Tool(kIdPickDirection1, u"\u2197 Pick edge",
         u"Take the direction of the columns from the drawing", u"Pick edge for direction 1"),
    {kIdReverseDirection1, u"Reverse", u"Turn the direction of the columns round",
     u"Reverse direction 1"},
    Tool(kIdPickDirection2, u"\u2197 Pick edge", u"Take the direction of the rows from the drawing",
         u"Pick edge for direction 2"),
    {kIdReverseDirection2, u"Reverse", u"Turn the direction of the rows round",
     u"Reverse direction 2"},
    {.id = kIdCadCreatePattern,
     .words = u"CREATE SKETCH PATTERN",
     .help = u"Lay out the pattern as sketch geometry (Enter)",
     .wordsOn = u"UPDATE PATTERN FEATURE"},  // while a pattern block is under edit
    {kIdCadApplyScale, u"Apply scale", u"Scale the selected part"},
    {kIdCadCreatePolygon, u"Create polygon sides", u"Create the polygon from these numbers"},
    Tool(kIdCadPickPivot, u"Pick pivot on drawing", u"Click the pivot on the canvas"),
    {kIdCadApplyRevolve, u"Apply revolve", u"Turn or copy the selected object"},
    {kIdCadApplyDimension, u"Apply dimension (Enter)", u"Resize the selected object to this value"},
    {kIdCadApplyThickness, u"Preview 3D", u"Show the sketch as a wireframe",
     u"Preview 3D with this thickness"},
    {.id = kIdCadReturnTo2D,
     .words = u"Return to 2D",
     .help = u"Back to drawing ({})",
     .chordOf = kIdCadCancel},

    // The selected geometry and the drawing as a whole.
    {kIdCadApply, u"Apply", u"Write these numbers to the selected object (Enter)"},
    {kIdCadDuplicate, u"Duplicate", u"A copy beside the selected object"},
    {.id = kIdCadDelete,
     .words = u"Delete",
     .help = u"Delete the selected part ({})",
     .chord = PlainKey(kDrawingChords, platform::kKeyDelete)},
    {.id = kIdCadHide,
     .words = u"Hide / show",
     .help = u"Hide or show the selected part",
     .menuWords = u"Hide / Show"},
    {.id = kIdCadLock,
     .words = u"Lock / unlock",
     .help = u"Keep the selected part from every edit",
     .menuWords = u"Lock / Unlock"},
    {kIdCadExtend, u"Extend", u"Grow the selected object by the amount"},
    {kIdCadTrim, u"Trim", u"Shrink the selected object by the amount"},
    {kIdCadSplit, u"Split", u"Cut the selected line at its midpoint"},
    {.id = kIdCadSaveShape,
     .words = u"Save shape",
     .help = u"Save this drawing as a reusable shape",
     .menuWords = u"Save reusable shape\u2026"},
    {kIdCadClear, u"Clear all", u"Empty this drawing (Undo restores it)"},
};

}  // namespace

std::span<const Command> CadCommands() { return kCommands; }

}  // namespace morva
