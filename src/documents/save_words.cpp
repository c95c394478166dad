#include "documents/save_words.h"

#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/program_information.h"
#include "documents/save_state.h"
#include "platform/clock.h"

namespace morva {
namespace {

constexpr const char16_t* kHoldWords[] = {
    u"",
    u"Changed on disk by another program. Not saved; use Save or Open again.",
    u"Not autosaved: the file cannot hold some of the characters. Use Save.",
    u"Not autosaved: the file would be too large to be opened again. Use Save.",
    u"Autosave failed. Changes remain unsaved; use Save As.",
};

enum class Kind { Other, Hold, Stored };

// What the status line said last of the saves of a program.
struct Told {
  std::u16string line;       // as the status line got it
  std::u16string words;      // without the program's name
  std::uint64_t serial = 0;  // of the program
  bool named = false;        // another program was shown
  Kind kind = Kind::Other;
};

Told told;

constexpr std::uint64_t kResultMs = 10000;
// What TellResult said last.
struct Result {
  std::u16string line;  // as the status line got it
  std::uint64_t at = 0;
};
Result result;

bool ResultIsNew() {
  return !result.line.empty() && result.line == app.statusText &&
         platform::TickMilliseconds() - result.at < kResultMs;
}

void Tell(const ProgramTab& tab, std::u16string_view words, Kind kind) {
  const bool named = &tab != ActiveTab();
  std::u16string line;
  if (named) line = NameOfTab(IndexOfSerial(tab.serial)) + u": ";
  ShowStatus(line.append(words));
  told = {app.statusText, std::u16string(words), tab.serial, named, kind};
}

// Typing gives a save that failed another try, and a Save As gives the program another name: its
// number tells whether the line is about it.
bool StatusTells(const ProgramTab& tab, Kind kind) {
  return told.kind == kind && told.serial == tab.serial && told.line == app.statusText;
}

}  // namespace

void TellAutosave(const ProgramTab& tab, std::u16string_view words) {
  Tell(tab, words, Kind::Other);
}

void TellStored(const ProgramTab& tab, std::u16string_view words) {
  if (!ResultIsNew() && !Call(hooks.tellStanding)) Tell(tab, words, Kind::Stored);
}

void TellResult(std::u16string_view words) {
  ShowStatus(words);
  result = {app.statusText, platform::TickMilliseconds()};
}

void TakeBackStored(const ProgramTab& tab) {
  if (StatusTells(tab, Kind::Stored)) ShowStanding();
}

void TellHeld(ProgramTab& tab, AutosaveHold reason) { TellHeld(tab, reason, HoldWords(reason)); }

void TellHeld(ProgramTab& tab, AutosaveHold reason, std::u16string_view words) {
  if (NoteHeld(tab, reason)) Tell(tab, words, Kind::Hold);
}

std::u16string_view HoldWords(AutosaveHold reason) { return kHoldWords[static_cast<int>(reason)]; }

std::u16string_view HeldWords() {
  const ProgramTab* const tab = ActiveTab();
  return tab ? HoldWords(tab->save.held) : u"";
}

bool StatusTellsHold(const ProgramTab& tab) { return StatusTells(tab, Kind::Hold); }

bool TellHoldOfShown() {
  const ProgramTab* const tab = ActiveTab();
  if (const std::u16string_view held = HeldWords(); !held.empty()) {
    Tell(*tab, held, Kind::Hold);
    return true;
  }
  if (told.serial == 0 || told.line != app.statusText) return false;
  const bool shown = tab && told.serial == tab->serial;
  if (shown != told.named) return false;
  const Told before = told;
  if (const ProgramTab* const other = TabOfSerial(before.serial)) {
    Tell(*other, before.words, before.kind);
  } else {
    ShowStatus(kReadyWords);
  }
  return false;
}

void ResetSaveWords() {
  told = {};
  result = {};
}

}  // namespace morva
