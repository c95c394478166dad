#include "codetools/codetools_commands.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "codetools/index_panel.h"

namespace morva {

namespace {

// A key that chooses what the list of the index shows, or how.
constexpr Command Choice(int id, const char16_t* words, const char16_t* help = u"Category",
                         const char16_t* name = u"") {
  return {.id = id, .words = words, .help = help, .name = name, .on = IsIndexKeyOn};
}

constexpr char16_t kCheckHelp[] = u"Check the program ({})";

constexpr Command kCommands[] = {
    // The program as a whole.
    {.id = kIdPreflight,
     .words = u"RUN PROGRAM PREFLIGHT",
     .help = kCheckHelp,
     .chord = FunctionKey(kEditorChords, 5)},
    {.id = kIdValidateSecond,
     .words = u"RUN VALIDATION",
     .help = kCheckHelp,
     .chordOf = kIdPreflight},
    {kIdRenumber, u"RENUMBER", u"Number the program's lines N10, N20, ..."},
    {kIdCommandWords, u"COMMAND WORDS", u"Show the program in plain words"},
    {.id = kIdWordsEditor, .hint = Hint::Quiet},
    {.id = kIdFind,
     .words = u"FIND",
     .help = u"Find and replace ({})",
     .chord = CtrlKey(kEditorChords, 'F')},

    {.id = kIdGoToLine, .words = u"Go to line\u2026", .chord = CtrlKey(kEditorChords, 'G')},
    {kIdLineGo, u"Go"},
    {kIdLineCancel, u"Cancel"},
    {.id = kIdCaretPlace, .hint = Hint::Quiet},

    // Find and replace. The captions say all.
    {kIdMatchCase, u"Match case"},
    {kIdWholeToken, u"Whole token"},
    {kIdNextMatch, u"NEXT MATCH"},
    {kIdRuleAdd, u"ADD RULE"},
    {kIdRuleRemove, u"REMOVE RULE"},
    {kIdRuleUndo, u"UNDO"},
    {kIdRulePreview, u"PREVIEW MATCHES"},
    {kIdRuleApply, u"APPLY RULES"},
    {kIdPromptEach, u"START - PROMPT EACH"},
    {kIdDoAll, u"DO ALL"},

    // The code index.
    {.id = kIdShowIndex,
     .words = u"CODE INDEX",
     .help = u"Show the index of codes",
     .on = [](int) { return !app.sidebarShowsFeatures; }},
    {kIdIndexClear, u"CLEAR SEARCH"},
    Choice(kIdIndexAll, u"All"),
    Choice(kIdIndexG, u"G"),
    Choice(kIdIndexM, u"M"),
    Choice(kIdIndexN, u"N"),
    Choice(kIdIndexMacro, u"Macro"),
    Choice(kIdIndexText, u"TEXT", u"Description first", u"Description first"),
    {kIdIndexInsert, u"INSERT INTO PROGRAM"},

    // The compare review.
    {.id = kIdCompareSecond,
     .words = u"COMPARE",
     .help = u"Compare two open programs",
     .wordsOn = u"EXIT REVIEW",
     .on = [](int) { return app.compareActive; },
     .told = kToldInTip},
    {kIdReviewSelected, u"Review selected", u"Compare the programs that are chosen in the list"},
    {kIdReviewPrevious, u"Previous change", u"Go to the change above"},
    {kIdReviewNext, u"Next change", u"Go to the change below"},
    {kIdReviewSwap, u"Swap sides", u"Make the other program the baseline"},
    {.id = kIdReviewSpaces,
     .words = u"Spaces: exact",
     .help = u"Whether blanks and tabs count as changes",
     .wordsOn = u"Spaces: ignored"},
    {.id = kIdReviewTags,
     .words = u"Tags: hidden",
     .help = u"Whether the marker lines of features take part",
     .wordsOn = u"Tags: shown"},
    {.id = kIdReviewLines,
     .words = u"All lines",
     .help = u"Whether equal lines are shown",
     .wordsOn = u"Changes only"},
    {.id = kIdReviewBack,
     .words = u"Back to program",
     .help = u"Leave the review",
     .chord = PlainKey(kReviewChords, platform::kKeyEscape)},
    {.id = kIdReviewSummary, .hint = Hint::Quiet},
    {.id = kIdReviewLeftPane, .hint = Hint::Quiet, .last = kIdReviewRightPane},

    // The import of operations.
    {kIdImport, u"Import operations into this project"},
    {.id = kIdImportPreview, .hint = Hint::Quiet},
    {kIdImportBrowse, u"Browse NC file\u2026", u"Take the operations of a file on disk"},
    {kIdImportAll, u"Select all", u"Choose every operation"},
    {kIdImportNone, u"Unselect all", u"Choose none"},
    {kIdImportRun, u"Import selected", u"Copy the chosen operations into the program"},
    {kIdImportCancel, u"Cancel", u"Close without importing"},
};

}  // namespace

std::span<const Command> CodeToolCommands() { return kCommands; }

}  // namespace morva
