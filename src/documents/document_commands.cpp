#include "documents/document_commands.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/icon_names.h"
#include "documents/tab_table.h"

namespace morva {

namespace {

constexpr Command kCommands[] = {
    // Programs.
    {.id = kIdNew,
     .words = u"NEW",
     .help = u"New program ({})",
     .chord = CtrlKey(kProgramChords, 'N')},
    {.id = kIdOpen,
     .words = u"OPEN",
     .help = u"Open a program; the last ones by its arrow or a right click ({})",
     .chord = CtrlKey(kProgramChords, 'O')},
    {.id = kIdRecentMenu, .words = u"Last programs", .chord = {&kProgramChords, {'O', true, true}}},
    {.id = kIdPrintProgram, .words = u"Print\u2026", .chord = CtrlKey(kProgramChords, 'P')},
    {.id = kIdRecentFirst, .words = u"Program opened before", .last = kIdRecentLast},
    {.id = kIdSaveMenu,
     .words = u"SAVE  \u25BC",
     .help = u"Save, Save As, Save All ({})",
     .chordOf = kIdSave},
    {.id = kIdSave, .words = u"Save", .chord = CtrlKey(kProgramChords, 'S')},
    {.id = kIdSaveAs, .words = u"Save As\u2026", .menuWords = u"Save as..."},
    {kIdSaveAll, u"Save All"},
    {.id = kIdTabFirst,
     .help = u"Ctrl+click chooses for comparison",
     .on = [](int id) { return app.activeTab == id - kIdTabFirst; },
     .about = [](int id) { return PlaceOfTab(id - kIdTabFirst); },
     .cutInside = true,
     .last = kIdTabLast},
    {kIdTabNew, u"+", u"New program in a tab", u"New program tab"},
    {.id = kIdClose,
     .words = u"CLOSE",
     .help = u"Close this program ({})",
     .chord = CtrlKey(kProgramChords, 'W')},
    {kIdComparePopup, u"Compare programs..."},
    {kIdClosePopup, u"Close program"},
    {.id = kIdEditor, .hint = Hint::Quiet},

    // Features.
    {.id = kIdFeatureList,
     .hintWords = u"Program features: right-click to isolate simulation, hide/show, or lock "
                  u"settings."},
    {.id = kIdFeatureEdit,
     .words = u"Edit feature",
     .help = u"Edit selected feature settings",
     .icon = kIconEdit},
    {.id = kIdFeatureNew, .words = u"New feature", .help = u"Add a new feature", .icon = kIconNew},
    {.id = kIdFeatureInclude,
     .words = u"Include code: ON",
     .help = u"Include / exclude machining code; keep geometry",
     .wordsOn = u"Include code: OFF",  // while the selected feature's code is excluded
     .menuWords = u"Toggle code inclusion",
     .icon = kIconInclude},
    {.id = kIdFeatureDelete,
     .words = u"Delete feature",
     .help = u"Delete selected feature (Undo restores)",
     .icon = kIconDelete,
     .chord = PlainKey(kFeatureListChords, platform::kKeyDelete)},
    {.id = kIdFeatureLock,
     .words = u"Lock feature",
     .help = u"Lock or unlock the feature's settings",
     .icon = kIconLock},
    {.id = kIdFeatureHide,
     .words = u"Show / hide feature",
     .help = u"Show or hide the feature in the simulator",
     .icon = kIconEye},
    {kIdFeatureRename, u"RENAME", u"Rename the selected feature"},
    {kIdFeatureIsolate, u"Simulate only this feature"},
    {kIdFeatureAll, u"Simulate all visible features"},
    {.id = kIdFeatureHideItem, .words = u"Hide feature", .wordsOn = u"Show feature"},
    {kIdFeatureShowAll, u"Show all features"},
    {.id = kIdFeatureLockItem, .words = u"Lock settings", .wordsOn = u"Unlock settings"},

    // The question where code goes. The captions say all.
    {kIdDestinationInsert, u"Insert / update code"},
    {kIdDestinationCancel, u"Cancel"},
    {kIdDestinationSplit, u"Split the user code"},  // and its line
};

}  // namespace

std::span<const Command> DocumentCommands() { return kCommands; }

}  // namespace morva
