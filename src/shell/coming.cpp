#include "shell/coming.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/mode_table.h"
#include "app/surfaces.h"

namespace morva {

namespace {

constexpr char16_t kShapes[] = u"Shape builder";
constexpr char16_t kCircular[] = u"Circular pattern";
constexpr char16_t kRectangular[] = u"Rectangular pattern";
constexpr char16_t kPlate[] = u"Plate workspace";

// A row moves to the room that brings the operation, and loses its `pending` there.
constexpr Command kCommands[] = {
    {.id = kIdSurfacePlate,
     .words = u"Plate",
     .help = u"Plate builder",
     .on = IsSurfaceKeyOn,
     .pending = kPlate},
    {.id = kIdShapeCombo, .pending = kShapes},
    {.id = kIdShapeInsert, .words = u"INSERT SHAPE G-CODE", .pending = kShapes},
    {.id = kIdQuickShapeFirst, .pending = kShapes, .last = kIdQuickShapeLast},
    {.id = kIdCustomShapes, .words = u"Custom shapes", .pending = kShapes},
    {.id = kIdQuickInsertFirst, .pending = u"Quick insert", .last = kIdQuickInsertLast},
    {.id = kIdCircularItem, .pending = kCircular},
    {.id = kIdCircularInsert, .words = u"INSERT CIRCULAR PATTERN", .pending = kCircular},
    {.id = kIdCircularOrientation, .pending = kCircular},
    {.id = kIdRectItem, .pending = kRectangular},
    {.id = kIdRectInsert, .words = u"INSERT RECTANGULAR PATTERN", .pending = kRectangular},
    {.id = kIdOldModeFirst + 2, .pending = kShapes},
    {.id = kIdOldModeFirst + 9, .pending = u"Slot builder"},
    {.id = kIdOldModeLast, .pending = kPlate},
};

constexpr KeyWidth kSurfaceKeys[] = {{kIdSurfacePlate, 64}};

constexpr const char16_t* kBuilderHelp =
    u"ACTIVE TOOL HELP\r\n\r\nAll generated code remains editable. Verify offsets, tooling, "
    u"compensation, workholding, and clearances before machining.";

constexpr ModeKey kShapeKeys[] = {{kIdOldModeFirst + 2}};
constexpr ModeKey kSlotKeys[] = {{kIdOldModeFirst + 9}};
constexpr ModeKey kPlateKeys[] = {{kIdOldModeFirst + 12}};
constexpr ModeKey kDncKeys[] = {
    {kIdMachine, RouterStage::FeatureSwitch}, {kIdSetup}, {kIdSetupSecond}, {kIdOpenDncSetup}};

constexpr ModeRow kModes[] = {
    {.mode = kModePlateItem,
     .place = 3,
     .words = u"Plate builder",
     .icon = kIconPlate,
     .keys = kPlateKeys},
    {.mode = kModeShapes,
     .place = 5,
     .words = u"Shapes and slots",
     .header = u"SHAPES / SLOTS",
     .help = kBuilderHelp,
     .icon = kIconShapes,
     .keys = kShapeKeys},
    {.mode = kModeSlot, .header = u"SLOT BUILDER", .help = kBuilderHelp, .keys = kSlotKeys},
    {.mode = kModeDnc,
     .place = 11,
     .words = u"DNC / RS-232",
     .header = u"DNC / RS-232",
     .remembers = true,
     .keys = kDncKeys},
    {.mode = kModeDiagnostics, .header = u"DIAGNOSTICS"},
};

}  // namespace

void RegisterComingModes() {
  for (ModeRow row : kModes) {
    row.coming = true;
    RegisterMode(row);
  }
}

std::span<const Command> ComingCommands() { return kCommands; }

std::span<const KeyWidth> ComingSurfaceKeys() { return kSurfaceKeys; }

}  // namespace morva
