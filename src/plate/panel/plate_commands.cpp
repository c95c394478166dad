#include "plate/panel/plate_commands.h"

#include "app/command_ids.h"
#include "app/icon_names.h"
#include "app/surfaces.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_editor.h"
#include "platform/control.h"

namespace morva {

namespace {

bool IsThroughOn(int) { return plateEditor.through; }
bool IsLockedOn(int) { return CurrentFeature() >= 0 && plate.features[CurrentFeature()].locked; }
bool IsHiddenOn(int) { return CurrentFeature() >= 0 && plate.features[CurrentFeature()].hidden; }
bool IsMetricOn(int) { return PlateIsMetric(); }
// Tabs are set as checked by the room, which knows the program's plates.
bool IsTabOn(int id) { return platform::IsChecked(id); }

constexpr Command kCommands[] = {
    {.id = kIdSurfacePlate, .words = u"Plate", .help = u"Plate builder", .on = IsSurfaceKeyOn},

    {kIdPlateCreate, u"Create plate", u"Name a new plate and keep it among the saved shapes"},
    {kIdPlateNaming, u"Name plate\u2026", u"Give this plate a name, or another one"},
    {kIdPlateReset, u"Reset plate", u"Start this plate over, without its features"},
    {kIdPlateFit, u"Fit", u"Show the whole plate again"},
    {.id = kIdPlateUnit,
     .words = u"IN \u25CF",
     .help = u"Unit of this plate: inch or millimeter",
     .name = u"Plate unit",
     .wordsOn = u"MM \u25CF",
     .on = IsMetricOn,
     .told = kToldChecked | kToldInWords},
    {.id = kIdPlateTabFirst,
     .help = u"Plate of this program",
     .on = IsTabOn,
     .told = kToldChecked,
     .cutInside = true,  // names of one job differ at their ends
     .last = kIdPlateTabLast},
    {kIdPlateTabAdd, u"+", u"New plate in this program", u"New plate drawing"},
    {.id = kIdPlateStatus, .hint = Hint::Quiet, .last = kIdPlateHint},

    {kIdPlateOutline, u"Other saved shape\u2026", u"Take another saved shape for the outline"},
    {.id = kIdPlateInsert,
     .words = u"INSERT PLATE",
     .help = u"Write the code of this plate into a program",
     .wordsOn = u"UPDATE PLATE"},  // while a plate's block is under edit
    {kIdPlatePrint, u"PRINT 1:1", u"Print a paper template at true size"},

    {kIdPlateSaved, u"Saved shape\u2026", u"Choose the saved shape that is cut here"},
    {.id = kIdPlateThrough,
     .words = u"Through: OFF",
     .help = u"Cut this feature as deep as the plate is thick",
     .wordsOn = u"Through: ON",
     .on = IsThroughOn,
     .told = kToldChecked | kToldInWords},
    {kIdPlateApply, u"Apply", u"Give the plate these numbers (Enter)"},
    {.id = kIdPlateLock,
     .words = u"Lock plate feature",
     .help = u"Keep this feature from every edit",
     .icon = kIconLock,
     .on = IsLockedOn},
    {.id = kIdPlateHide,
     .words = u"Show / hide plate feature",
     .help = u"Hide the feature in picture and print; it is cut all the same",
     .icon = kIconEye,
     .on = IsHiddenOn},
    {.id = kIdPlateDelete,
     .words = u"Delete plate feature",
     .help = u"Take the feature and its cut away",
     .icon = kIconDelete},
    {kIdPlateClose, u"Close", u"Leave the editor without these numbers (Escape)"},
};

}  // namespace

std::span<const Command> PlateCommands() { return kCommands; }

}  // namespace morva
