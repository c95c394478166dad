#include "codetools/codetools_commands.h"

#include "app/command_ids.h"

namespace morva {

namespace {

constexpr char16_t kCategory[] = u"Category";

constexpr Command kCommands[] = {
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
    {kIdIndexClear, u"CLEAR SEARCH"},
    {kIdIndexAll, u"All", kCategory},
    {kIdIndexG, u"G", kCategory},
    {kIdIndexM, u"M", kCategory},
    {kIdIndexN, u"N", kCategory},
    {kIdIndexMacro, u"Macro", kCategory},
    {kIdIndexText, u"TEXT", u"Description first", u"Description first"},
    {kIdIndexInsert, u"INSERT INTO PROGRAM"},

    // The import of operations.
    {kIdImportBrowse, u"Browse NC file\u2026", u"Take the operations of a file on disk"},
    {kIdImportAll, u"Select all", u"Choose every operation"},
    {kIdImportNone, u"Unselect all", u"Choose none"},
    {kIdImportRun, u"Import selected", u"Copy the chosen operations into the program"},
    {kIdImportCancel, u"Cancel", u"Close without importing"},
};

}  // namespace

std::span<const Command> CodeToolCommands() { return kCommands; }

}  // namespace morva
