#include "shell/shell_commands.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/surfaces.h"
#include "documents/document_commands.h"

namespace morva {

namespace {

// A row of what is still to come moves to the room that brings the operation, and loses its
// `pending` there.
constexpr char16_t kWizard[] = u"Machining wizard";
constexpr char16_t kTools[] = u"Tool library";
constexpr char16_t kMacros[] = u"Macro library";
constexpr char16_t kShapes[] = u"Shape builder";
constexpr char16_t kBuilderUnits[] = u"Units of the builders";
constexpr char16_t kCircular[] = u"Circular pattern";
constexpr char16_t kRectangular[] = u"Rectangular pattern";
constexpr char16_t kPlate[] = u"Plate workspace";

constexpr Command kCommands[] = {
    {.id = kIdBack,
     .words = u"\u2190  Home",
     .help = u"Back to where you were",
     .name = u"Back",
     .wordsOn = u"\u2190"},  // while the user is somewhere else
    {.id = kIdSurfaceCode, .words = u"Code", .help = u"Program workspace", .on = IsSurfaceKeyOn},
    {.id = kIdSurfacePlate,
     .words = u"Plate",
     .help = u"Plate builder",
     .on = IsSurfaceKeyOn,
     .pending = kPlate},
    {.id = kIdShowFeatures,
     .words = u"FEATURES",
     .help = u"Show the program's features",
     .on = [](int) { return app.sidebarShowsFeatures; }},
    {.id = kIdInlineName, .chord = FunctionKey(kFeatureListChords, 2), .over = kIdFeatureList},
    {.id = kIdFeatureUndo, .words = u"Undo", .chord = CtrlKey(kFeatureChords, 'Z')},

    // Standing text and the status line are read where they are; they must not wipe the log.
    {.id = kIdStatusLine, .hint = Hint::Quiet},
    {.id = kIdOutputLog, .hint = Hint::Quiet},
    {.id = kIdInfoPanel, .hint = Hint::Quiet, .last = kIdHelpText},

    {.id = kIdWizardCombo, .pending = kWizard},
    {.id = kIdWizardInsert, .words = u"INSERT GENERATED CODE", .pending = kWizard},
    {.id = kIdWizardKindFirst, .pending = kWizard, .last = kIdWizardKindLast},
    {.id = kIdToolList, .pending = kTools},
    {.id = kIdToolAdd, .words = u"+ ADD TOOL", .pending = kTools},
    {.id = kIdToolEdit, .words = u"EDIT TOOL", .pending = kTools},
    {.id = kIdToolDelete, .words = u"DELETE", .pending = kTools},
    {.id = kIdToolInsert, .words = u"INSERT CODE", .pending = kTools},
    {.id = kIdHomeTool, .pending = kTools},
    {.id = kIdMacroCombo, .pending = kMacros},
    {.id = kIdMacroInsert, .words = u"INSERT BUILT-IN MACRO", .pending = kMacros},
    {.id = kIdMacroList, .pending = kMacros},
    {.id = kIdMacroFirst, .pending = kMacros, .last = kIdMacroLast},
    {.id = kIdShapeCombo, .pending = kShapes},
    {.id = kIdShapeInsert, .words = u"INSERT SHAPE G-CODE", .pending = kShapes},
    {.id = kIdQuickShapeFirst, .pending = kShapes, .last = kIdQuickShapeLast},
    {.id = kIdCustomShapes, .words = u"Custom shapes", .pending = kShapes},
    {.id = kIdQuickInsertFirst, .pending = u"Quick insert", .last = kIdQuickInsertLast},
    {.id = kIdBuilderInch, .words = u"INCH", .wordsOn = u"INCH *", .pending = kBuilderUnits},
    {.id = kIdBuilderMm, .words = u"MM", .wordsOn = u"MM *", .pending = kBuilderUnits},
    {.id = kIdCircularItem, .pending = kCircular},
    {.id = kIdCircularInsert, .words = u"INSERT CIRCULAR PATTERN", .pending = kCircular},
    {.id = kIdCircularOrientation, .pending = kCircular},
    {.id = kIdRectItem, .pending = kRectangular},
    {.id = kIdRectInsert, .words = u"INSERT RECTANGULAR PATTERN", .pending = kRectangular},
    {.id = kIdOldModeFirst + 1, .pending = u"Panels still to come", .last = kIdOldModeFirst + 4},
    {.id = kIdOldModeFirst + 9, .pending = u"Slot builder"},
    {.id = kIdOldModeLast, .pending = kPlate},
};

}  // namespace

std::span<const Command> ShellCommands() { return kCommands; }

}  // namespace morva
