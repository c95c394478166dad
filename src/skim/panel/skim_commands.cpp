#include "skim/panel/skim_commands.h"

#include "app/command_ids.h"
#include "library/unit_commands.h"
#include "skim/model/wizard_state.h"

namespace morva {

namespace {

constexpr unsigned kToldBoth = kToldChecked | kToldInWords;

bool IsMatrixShown(int) { return skimWizard.matrixShown; }
bool IsPlacing(int) { return skimWizard.placing; }
bool IsCoverageOn(int) { return skimWizard.coverage; }

constexpr Command kCommands[] = {
    {.id = kIdSkimTools, .hint = Hint::Quiet},
    {.id = kIdSkimStrategies, .hint = Hint::Quiet},
    {.id = kIdSkimDepths, .hint = Hint::Quiet},
    {.id = kIdSkimMatrix, .hint = Hint::Quiet},
    {.id = kIdSkimCode, .hint = Hint::Quiet},
    {.id = kIdSkimPosition,
     .words = u"POSITION AREA",
     .help = u"Place the stock by numbers or by a click in the view",
     .on = IsPlacing},
    {.id = kIdSkimPickGeometry,
     .words = u"PICK GEOMETRY",
     .help = u"The next click puts the stock's corner on geometry"},
    {.id = kIdSkimPickPlane,
     .words = u"FREE PICK XY",
     .help = u"The next click puts the stock's corner there"},
    {.id = kIdSkimPickDrawing,
     .words = u"PICK IN DRAWING",
     .help = u"The next click in the drawing puts the stock's corner there"},
    {.id = kIdSkimCoverage,
     .words = u"COVERAGE OFF",
     .help = u"Paint what the cutter sweeps",
     .wordsOn = u"COVERAGE ON",
     .on = IsCoverageOn,
     .told = kToldBoth},
    {.id = kIdSkimDraw,
     .words = u"\u270E Draw skim path",
     .help = u"Draw the line that the cutter's center follows",
     .name = u"Draw skim path"},
    {.id = kIdSkimShowMatrix,
     .words = u"SHOW CODE MATRIX",
     .help = u"How each setting lands in the code",
     .wordsOn = u"HIDE CODE MATRIX",
     .on = IsMatrixShown,
     .told = kToldBoth},
    InchKey(kIdSkimInch, u"Inch of the skim"),
    MmKey(kIdSkimMm, u"Millimeter of the skim"),
    {.id = kIdSkimBack, .words = u"BACK", .help = u"The page before this one"},
    {.id = kIdSkimNext, .words = u"NEXT", .help = u"Check the plan and go on"},
    {.id = kIdSkimInsert,
     .words = u"INSERT SKIM",
     .help = u"Write the skim into the program at the caret",
     .wordsOn = u"UPDATE SKIM"},
    {.id = kIdSkimCancel, .words = u"CANCEL", .help = u"Leave the skim; its plan is kept"},
};

}  // namespace

std::span<const Command> SkimCommands() { return kCommands; }

}  // namespace morva
