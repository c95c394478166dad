#include "codetools/find_work.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "codetools/find_pane.h"
#include "codetools/find_rules.h"
#include "codetools/words_view.h"
#include "documents/autosave.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "library/codetext.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/message.h"

namespace morva {

namespace {

constexpr int kMostPrompts = 10000;
constexpr int kRulesRefreshMs = 60;
constexpr int kPromptRefreshMs = 80;
constexpr std::size_t kNone = std::u16string_view::npos;

std::size_t nextMatchStart = 0;  // a text index

void PaneStatus(std::u16string_view text) { platform::SetText(kIdFindStatus, text); }

void SelectText(std::u16string_view text, std::size_t at, std::size_t length) {
  OffsetMap map{text};
  platform::EditorRange range;
  range.from = AdvanceOffset(map, static_cast<std::int32_t>(at));
  range.to = AdvanceOffset(map, static_cast<std::int32_t>(at + length));
  platform::SetEditorSelection(kIdEditor, range);
  platform::ScrollCaretIntoView(kIdEditor);
}

// The whole program as one undoable edit.
void ReplaceProgram(const std::u16string& text) {
  platform::SetEditorSelection(kIdEditor, {0, platform::EditorLength(kIdEditor)});
  platform::ReplaceSelection(kIdEditor, text, true);
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
}

bool RefuseEmptyFind(const std::u16string& find) {
  if (!find.empty()) return false;
  platform::ShowBox(u"Change All", u"Enter text/code to find first.", platform::BoxButtons::Ok,
                    platform::BoxIcon::Warning);
  return true;
}

std::u16string Question(const char16_t* first, const std::u16string& find,
                        const std::u16string& replaceWith) {
  return first + (u"\r\n\r\nFind:  " + find) + u"\r\nReplace with:  " + replaceWith;
}

struct Prompted {
  int accepted = 0;
  int reviewed = 0;
};

// One occurrence: shows it, asks, replaces. False: the user stopped.
bool PromptAt(const std::u16string& text, std::size_t& at, const std::u16string& find,
              const std::u16string& replaceWith, Prompted& prompted) {
  SelectText(text, at, find.size());
  platform::SetFocusTo(kIdEditor);
  ++prompted.reviewed;
  const std::uint64_t serial = ActiveSerial();
  const platform::BoxAnswer answer = platform::ShowBox(
      u"MORVA Change All",
      Question(u"Change this occurrence?", find, replaceWith) +
          u"\r\n\r\nYES = replace this one\r\nNO = skip this one\r\nCANCEL = stop",
      platform::BoxButtons::YesNoCancel, platform::BoxIcon::Question);
  if (answer != platform::BoxAnswer::Yes && answer != platform::BoxAnswer::No) return false;
  // Another program came up meanwhile: nobody was asked about that one.
  if (ActiveSerial() != serial) return false;
  if (answer == platform::BoxAnswer::No) {
    at += find.size();
    return true;
  }
  // A refresh may have run while the box stood open: then the place is looked for again.
  if (platform::EditorText(kIdEditor) != text) return true;
  SelectText(text, at, find.size());
  platform::ReplaceSelection(kIdEditor, replaceWith, true);
  ++prompted.accepted;
  at += replaceWith.size();
  return true;
}

}  // namespace

std::u16string FindField() { return platform::TextOf(kIdFindText).substr(0, kFindUnits - 1); }

std::u16string ReplaceField() { return platform::TextOf(kIdReplaceText).substr(0, kFindUnits - 1); }

void NextMatch() {
  SetWordsView(false);
  const std::u16string text(platform::EditorText(kIdEditor));
  const std::u16string find = FindField();
  const bool matchCase = platform::IsChecked(kIdMatchCase);
  const bool wholeToken = platform::IsChecked(kIdWholeToken);
  std::size_t at = FindMatch(text, nextMatchStart, find, matchCase, wholeToken);
  if (at == kNone) at = FindMatch(text, 0, find, matchCase, wholeToken);
  if (at == kNone) {
    nextMatchStart = 0;
    PaneStatus(u"No matching text found.");
    return;
  }
  int line = 0;
  for (std::size_t i = 0; i < at; ++i) line += text[i] == u'\n';
  Call(hooks.highlightLine, line);
  SelectText(text, at, find.size());
  nextMatchStart = at + find.size();
  PaneStatus(u"Match selected in the code. Next Match wraps around the program.");
}

void ApplyRules(bool commit) {
  SetWordsView(false);
  FindRule single;
  const FindRule* rules = ruleQueue.rules;
  int count = ruleQueue.count;
  if (count == 0) {
    CopyBounded(single.find, kFindUnits, FindField());
    CopyBounded(single.replaceWith, kFindUnits, ReplaceField());
    rules = &single;
    count = single.find[0] ? 1 : 0;
  }
  const RuleRun run =
      RunRules(platform::EditorText(kIdEditor), rules, count, platform::IsChecked(kIdMatchCase),
               platform::IsChecked(kIdWholeToken));
  if (run.overLimit) {
    PaneStatus(u"Replacement exceeds the size limit. No code changed.");
    return;
  }
  PaneStatus(IntegerText(run.matches) +
             (commit ? u" replacements applied. Undo restores the previous code."
                     : u" matches in the active program. Apply Rules performs this batch."));
  if (!commit || run.matches == 0) return;
  ReplaceProgram(run.text);
  MarkModified();
  ArmTextRefresh(kRulesRefreshMs);
}

void PromptEach() {
  SetWordsView(false);
  const std::u16string find = FindField();
  const std::u16string replaceWith = ReplaceField();
  if (RefuseEmptyFind(find)) return;
  // Settled now, so that no marker comes in between two questions.
  AutoTagBlocks();
  const std::uint64_t serial = ActiveSerial();
  Prompted prompted;
  std::size_t at = 0;
  for (int round = 0; round < kMostPrompts; ++round) {
    const std::u16string text(platform::EditorText(kIdEditor));
    at = FindMatch(text, at, find, false, false);
    if (at == kNone || !PromptAt(text, at, find, replaceWith, prompted)) break;
  }
  if (prompted.accepted > 0 && ActiveSerial() == serial) {
    MarkModified();
    ArmTextRefresh(kPromptRefreshMs);
  }
  AppendOutput(u"Change All: " + IntegerText(prompted.accepted) +
               u" replacement(s) accepted from " + IntegerText(prompted.reviewed) +
               u" occurrence(s) reviewed.");
}

void DoAll() {
  const std::u16string find = FindField();
  const std::u16string replaceWith = ReplaceField();
  if (RefuseEmptyFind(find)) return;
  const int count = CountOccurrences(platform::EditorText(kIdEditor), find);
  if (count == 0) {
    platform::ShowBox(u"Change All", u"No matching text was found in the active tab.",
                      platform::BoxButtons::Ok, platform::BoxIcon::Information);
    return;
  }
  const std::uint64_t serial = ActiveSerial();
  const platform::BoxAnswer answer = platform::ShowBox(
      u"Confirm DO ALL",
      Question(u"Replace every matching occurrence in the active program?", find, replaceWith) +
          u"\r\n\r\nMatches:  " + IntegerText(count),
      platform::BoxButtons::YesNo, platform::BoxIcon::Warning);
  if (answer != platform::BoxAnswer::Yes || ActiveSerial() != serial) return;
  // Counted again: a refresh may have run while the box stood open.
  const std::u16string text(platform::EditorText(kIdEditor));
  const int changed = CountOccurrences(text, find);
  ReplaceProgram(ReplaceOccurrences(text, find, replaceWith));
  Call(hooks.rebuildToolpath);
  MarkModified();
  AppendOutput(u"DO ALL complete: " + IntegerText(changed) + u" occurrence(s) changed.");
}

void ResetFindWork() { nextMatchStart = 0; }

}  // namespace morva
