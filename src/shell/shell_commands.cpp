#include "shell/shell_commands.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/surfaces.h"
#include "documents/document_commands.h"
#include "shell/strip.h"

namespace morva {

namespace {

constexpr Command kCommands[] = {
    {.id = kIdBack,
     .words = u"\u2190  Home",
     .help = u"Back to where you were",
     .name = u"Back",
     .wordsOn = u"\u2190"},  // while the user is somewhere else
    {.id = kIdSurfaceCode, .words = u"Code", .help = u"Program workspace", .on = IsSurfaceKeyOn},
    {.id = kIdShowFeatures,
     .words = u"FEATURES",
     .help = u"Show the program's features",
     .on = [](int) { return app.sidebarShowsFeatures; }},
    {.id = kIdStrip,
     .words = u"\u25BC",
     .help = u"Close or open the output below the code ({}; the arrows up and down move its edge)",
     .name = u"Output closed",
     .wordsOn = u"\u25B2",
     .hint = Hint::Help,
     .on = [](int) { return IsStripClosed(); },
     .told = kToldChecked | kToldInWords,
     .chord = CtrlKey(kStripChords, 'J')},
    {.id = kIdKeysPage, .words = u"All keys", .chord = FunctionKey(kWindowChords, 1)},
    {kIdKeysClose, u"Close"},
    {.id = kIdInlineName,
     .name = u"Rename the feature",
     .chord = FunctionKey(kFeatureListChords, 2),
     .over = kIdFeatureList},
    {.id = kIdFeatureUndo, .words = u"Undo", .chord = CtrlKey(kFeatureChords, 'Z')},

    // Standing text and the status line are read where they are; they must not wipe the log.
    {.id = kIdStatusLine, .hint = Hint::Quiet},
    {.id = kIdOutputLog, .hint = Hint::Quiet},
    {.id = kIdInfoPanel, .hint = Hint::Quiet, .last = kIdHelpText},
};

}  // namespace

std::span<const Command> ShellCommands() { return kCommands; }

}  // namespace morva
