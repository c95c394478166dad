#include "codetools/find_work.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "codetools/find_match.h"
#include "codetools/find_rules.h"
#include "codetools/words_view.h"
#include "documents/editor_changes.h"
#include "documents/feature_blocks.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "documents/text_room.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

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

// The review covers the code, and the code is not to change or be shown behind it.
void UncoverCode() {
  if (app.compareActive) Call(hooks.leaveCompare);
}

// A change is no typing: the completion list does not open on it.
void ReplaceQuietly(const std::u16string_view text) {
  const ApplyingCompletion quiet;
  platform::ReplaceSelection(kIdEditor, text, true);
}

// Where the user is in the program, so that a change of the whole text leaves him there: his
// caret and the line at the top, and the caret's line and the top one of the words view.
struct Standing {
  enum Place { kCaret, kTop, kWordsCaret, kWordsTop, kPlaces };
  std::size_t at[kPlaces] = {};
  int wordsColumn = 0;
  FollowedPlaces Followed() { return {at, kPlaces}; }
};

std::size_t LineAt(std::u16string_view text, int line) {
  return static_cast<std::size_t>(TextIndexOf(text, platform::EditorLineStart(kIdEditor, line)));
}

int PositionOf(std::u16string_view text, std::size_t at) {
  return MapTextOffset(text, static_cast<std::int32_t>(at));
}

int LineOfPlace(std::u16string_view text, std::size_t at) {
  return platform::EditorLineOf(kIdEditor, PositionOf(text, at));
}

Standing NoteStanding(std::u16string_view text) {
  Standing standing;
  standing.at[Standing::kCaret] =
      static_cast<std::size_t>(TextIndexOf(text, platform::EditorSelection(kIdEditor).to));
  standing.at[Standing::kTop] = LineAt(text, platform::FirstVisibleLine(kIdEditor));
  if (!app.commandWordsActive) return standing;
  const int caret = platform::EditorSelection(kIdWordsEditor).to;
  const int line = platform::EditorLineOf(kIdWordsEditor, caret);
  standing.wordsColumn = caret - platform::EditorLineStart(kIdWordsEditor, line);
  standing.at[Standing::kWordsCaret] = LineAt(text, line);
  standing.at[Standing::kWordsTop] = LineAt(text, platform::FirstVisibleLine(kIdWordsEditor));
  return standing;
}

void ReturnToStanding(std::u16string_view text, const Standing& standing) {
  const int caret = PositionOf(text, standing.at[Standing::kCaret]);
  platform::SetEditorSelection(kIdEditor, {caret, caret});
  platform::ScrollToLine(kIdEditor, LineOfPlace(text, standing.at[Standing::kTop]));
}

void ReturnInWords(std::u16string_view text, const Standing& standing) {
  const int line = LineOfPlace(text, standing.at[Standing::kWordsCaret]);
  const int start = platform::EditorLineStart(kIdWordsEditor, line);
  const int length = platform::EditorLineLength(kIdWordsEditor, line);
  const int caret = start + std::min(standing.wordsColumn, length);
  platform::SetEditorSelection(kIdWordsEditor, {caret, caret});
  platform::ScrollToLine(kIdWordsEditor, LineOfPlace(text, standing.at[Standing::kWordsTop]));
}

// The whole program as one undoable edit. The user stays where he was, at the same code.
void ReplaceProgram(std::u16string_view text, const Standing& standing) {
  for (const int id : {kIdEditor, kIdWordsEditor}) platform::HoldEditorRedraw(id, true);
  platform::SetEditorSelection(kIdEditor, {0, platform::EditorLength(kIdEditor)});
  ReplaceQuietly(text);
  ReturnToStanding(text, standing);
  if (app.commandWordsActive) {
    Call(hooks.wordsFromEditor);
    ReturnInWords(text, standing);
  }
  for (const int id : {kIdEditor, kIdWordsEditor}) platform::HoldEditorRedraw(id, false);
}

// Whether the place in `before` lies between the first and the last difference of two texts. The
// user stands amid what a step back restored then, and stays; else he is led to it.
bool IsInsideChange(std::u16string_view before, std::u16string_view after, std::size_t at) {
  if (before == after) return false;
  const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto back = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
  const auto first = static_cast<std::size_t>(front.first - before.begin());
  const auto behind = static_cast<std::size_t>(back.first - before.rbegin());
  return at >= first && at + behind <= before.size();
}

void TellOverLimit() { PaneStatus(u"Replacement exceeds the size limit. No code changed."); }

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

// What a question has to say about lines that mark features.
std::u16string MarkerWords(const std::u16string& which) {
  return u"\r\n\r\n" + which +
         u" A change there can take a feature apart, and the code of an excluded one is not found "
         u"again.";
}

std::u16string WordsForAll(std::u16string_view text, const std::u16string& find) {
  const int count = CountInMarkers(text, find);
  if (count == 0) return {};
  return MarkerWords(u"In lines that mark features:  " + IntegerText(count) + u".");
}

struct Prompted {
  int accepted = 0;
  int reviewed = 0;
};

// Autosave and the refresh of a pause write markers while a question stands open. They take
// the selection along, so the occurrence is where that is now; npos where it is there no more.
std::size_t SelectedOccurrence(std::u16string_view text, const std::u16string& find) {
  const platform::EditorRange range = platform::EditorSelection(kIdEditor);
  const auto from = static_cast<std::size_t>(TextIndexOf(text, range.from));
  const auto to = static_cast<std::size_t>(TextIndexOf(text, range.to));
  return to - from == find.size() && MatchAt(text, from, find, false, false) ? from : kNone;
}

// One occurrence: shows it, asks, replaces. False: the user stopped.
bool PromptAt(std::u16string_view text, std::size_t& at, const std::u16string& find,
              const std::u16string& replaceWith, Prompted& prompted) {
  SelectText(text, at, find.size());
  platform::SetFocusTo(kIdEditor);
  const std::uint64_t serial = ActiveSerial();
  const platform::BoxAnswer answer = platform::ShowBox(
      u"MORVA Change All",
      Question(u"Change this occurrence?", find, replaceWith) +
          (IsInMarker(text, at) ? MarkerWords(u"This line marks a feature.") : u"") +
          u"\r\n\r\nYES = replace this one\r\nNO = skip this one\r\nCANCEL = stop",
      platform::BoxButtons::YesNoCancel, platform::BoxIcon::Question);
  const bool goesOn = answer == platform::BoxAnswer::Yes || answer == platform::BoxAnswer::No;
  // Another program came up meanwhile: nobody was asked about that one.
  if (goesOn && ActiveSerial() != serial) {
    ++prompted.reviewed;
    return false;
  }
  const std::size_t found = goesOn ? SelectedOccurrence(platform::EditorText(kIdEditor), find) : at;
  // Somebody else changed the occurrence itself: what stands there now is asked about.
  if (found == kNone) return true;
  ++prompted.reviewed;
  if (!goesOn) return false;
  at = found;
  if (answer == platform::BoxAnswer::No) {
    at += find.size();
    return true;
  }
  if (replaceWith.size() > find.size() && !HasRoomFor(replaceWith.size() - find.size())) {
    if (prompted.accepted == 0) {
      TellOverLimit();
    } else {
      PaneStatus(u"The next replacement exceeds the size limit. Those before it stay.");
    }
    return false;
  }
  ReplaceQuietly(replaceWith);
  ++prompted.accepted;
  at += replaceWith.size();
  return true;
}

}  // namespace

std::u16string FindField() { return platform::TextOf(kIdFindText).substr(0, kFindUnits - 1); }

std::u16string ReplaceField() { return platform::TextOf(kIdReplaceText).substr(0, kFindUnits - 1); }

void NextMatch() {
  UncoverCode();
  SetWordsView(false);
  const std::u16string_view text(platform::EditorText(kIdEditor));
  const std::u16string find = FindField();
  const bool matchCase = platform::IsChecked(kIdMatchCase);
  const bool wholeToken = platform::IsChecked(kIdWholeToken);
  const std::size_t from = nextMatchStart;
  std::size_t at = FindMatch(text, from, find, matchCase, wholeToken);
  if (at == kNone && from > 0) at = FindMatch(text, 0, find, matchCase, wholeToken);
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
  if (commit) UncoverCode();
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
  const std::u16string_view text = platform::EditorText(kIdEditor);
  Standing standing = NoteStanding(text);
  const RuleRun run = RunRules(text, rules, count, platform::IsChecked(kIdMatchCase),
                               platform::IsChecked(kIdWholeToken), standing.Followed());
  if (run.overLimit) return TellOverLimit();
  PaneStatus(IntegerText(run.matches) +
             (commit ? u" replacements applied. Undo restores the previous code."
                     : u" matches in the active program. Apply Rules performs this batch."));
  if (!commit || run.matches == 0) return;
  if (!FitsAsProgram(run.text.View())) return TellOverLimit();
  ReplaceProgram(run.text.View(), standing);
  ProgramChanged({.refreshMs = kRulesRefreshMs});
}

void PromptEach() {
  UncoverCode();
  SetWordsView(false);
  const std::u16string find = FindField();
  const std::u16string replaceWith = ReplaceField();
  if (RefuseEmptyFind(find)) return;
  const std::uint64_t serial = ActiveSerial();
  Prompted prompted;
  std::size_t at = 0;
  for (int round = 0; round < kMaxPrompts; ++round) {
    const std::u16string_view text = platform::EditorText(kIdEditor);
    at = FindMatch(text, at, find, false, false);
    if (at == kNone || !PromptAt(text, at, find, replaceWith, prompted)) break;
  }
  if (prompted.accepted > 0 && ActiveSerial() == serial) {
    ProgramChanged({.refreshMs = kPromptRefreshMs});
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
          WordsForAll(platform::EditorText(kIdEditor), find) + u"\r\n\r\nMatches:  " +
          IntegerText(count),
      platform::BoxButtons::YesNo, platform::BoxIcon::Warning);
  if (answer != platform::BoxAnswer::Yes || ActiveSerial() != serial) return;
  // Read and counted again: a refresh may have run while the box stood open.
  const std::u16string_view text = platform::EditorText(kIdEditor);
  const int changed = CountOccurrences(text, find);
  Standing standing = NoteStanding(text);
  const OwnedText all = ReplaceOccurrences(text, find, replaceWith, standing.Followed());
  if (!all.units || !FitsAsProgram(all.View())) return TellOverLimit();
  UncoverCode();
  ReplaceProgram(all.View(), standing);
  const std::u16string told =
      u"DO ALL complete: " + IntegerText(changed) + u" occurrence(s) changed.";
  ProgramChanged({.rebuildPath = true, .logged = told});
}

void UndoInCode() {
  UncoverCode();
  const std::u16string before(platform::EditorText(kIdEditor));
  const int caret = platform::EditorSelection(kIdEditor).to;
  const int line = platform::EditorLineOf(kIdEditor, caret);
  const int column = caret - platform::EditorLineStart(kIdEditor, line);
  const int top = platform::FirstVisibleLine(kIdEditor);
  platform::RunEditAction(kIdEditor, platform::EditAction::Undo);
  const auto at = static_cast<std::size_t>(TextIndexOf(before, caret));
  if (IsInsideChange(before, platform::EditorText(kIdEditor), at)) {
    const int start = platform::EditorLineStart(kIdEditor, line);
    const int place = start + std::min(column, platform::EditorLineLength(kIdEditor, line));
    platform::SetEditorSelection(kIdEditor, {place, place});
    platform::ScrollToLine(kIdEditor, top);
  }
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  PaneStatus(u"");
}

void ResetFindWork() { nextMatchStart = 0; }

}  // namespace morva
