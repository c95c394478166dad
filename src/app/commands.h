// Commands: what a key, a menu item or a field says about itself. One table for all rooms.
//
// Each room hands in its rows when rooms are joined. Caption, tool tip, hover hint, accessible
// name, icon and shortcut words come from here, so that every sentence stands once. What a
// command does is the router's business.
#pragma once

#include <span>
#include <string>

#include "app/chords.h"
#include "platform/window.h"

namespace morva {

// What the status line says while the pointer rests on a control.
enum class Hint : unsigned char {
  Words,  // what is written on it just now; nothing for a field, whose words are its value
  Help,   // its tool tip
  Quiet,  // nothing: it is read where it is
};

// How a key tells its state besides its look.
enum Told : unsigned char {
  kToldChecked = 1,  // as checked or not, to assistive technology
  kToldInTip = 2,  // by "  (on)" behind the tool tip, which a screen reader gives for a description
  kToldInWords = 4,  // by its caption, which changes with every refresh
};

inline constexpr int kNoIcon = -1;

struct Command {
  int id = 0;
  const char16_t* words = u"";  // the caption
  // The tool tip; empty: none, or the words where an icon hides them. {} stands for a chord.
  const char16_t* help = u"";
  const char16_t* name = u"";       // for assistive technology, where the caption says too little
  const char16_t* wordsOn = u"";    // the caption while its state is on; empty: the same
  const char16_t* menuWords = u"";  // in a context menu; empty: the caption
  Hint hint = Hint::Words;
  const char16_t* hintWords = u"";            // a hint of its own, instead of `hint`
  int icon = kNoIcon;                         // icon_names.h
  int iconOn = kNoIcon;                       // while its state is on; none: the same
  bool (*on)(int id) = nullptr;               // whether its state is on; null: it has no state
  unsigned told = kToldChecked | kToldInTip;  // of its state
  std::u16string (*about)(int id) = nullptr;  // begins the tip, as it is now; empty: nothing does
  // Why its key does nothing where it stands just now, as a sentence that begins the tip while the
  // key is dim; null: it works. The router still takes the command.
  const char16_t* (*barred)(int id) = nullptr;
  bool cutInside = false;  // a caption too long is cut in the middle, as names differ at their ends
  Chord chord = {};
  int chordOf = 0;                // whose chord the tip names; 0: its own
  const char16_t* pending = u"";  // what is still to come; empty: the command exists
  int last = 0;                   // of a range of ids that say the same; 0: one id
  int over = 0;                   // the control that this one lies over and whose hint it gives
};

// Keeps a view of the rows, which must last as long as the program. The same row handed in again
// counts once. Another row of an id that stands there, or more than kMaxCommands rows, stop the
// program with words.
void AddCommands(std::span<const Command> rows);
void ResetCommandWords();
// Null where no room knows the id.
const Command* CommandOf(int id);
// Every row, by id.
std::span<const Command* const> AllCommands();

// Whether the id is still to come: its key is dim and nobody answers it.
bool IsPending(int id);
// The caption of an id while its state is on or off; empty where no room knows it.
const char16_t* WordsOf(int id, bool on = false);
// The tool tip with its chord; empty for none.
std::u16string HelpOf(int id);
// What is said while the pointer rests on a control; empty for nothing.
std::u16string HintOf(int id);
// The command whose chord the key is at this place, 0 for none.
int CommandOfChord(const ChordPlace& place, const platform::KeyEvent& key);
// Runs the command whose chord the key is at this place. False: there is none, or nobody took it.
bool RouteChord(const ChordPlace& place, const platform::KeyEvent& key);

// Makes the push button of a command in `parent`: caption, accessible name and tool tip of its
// row, disabled while the command is still to come. It gets no place. False: no row has the id,
// or the system made no button.
bool MakeCommandKey(int id, int parent, platform::FontRole font, bool hidden);
// A check box in the same way.
bool MakeCommandCheck(int id, int parent, platform::FontRole font, bool hidden);
// Writes the caption of the state on the command's button, where it stands and says another one.
void ShowWords(int id, bool on);
// Writes the tip of the command's button anew, where what its `about` tells has changed.
void RefreshTip(int id);
// Whether a command has a state, and whether that is on.
bool HasState(int id);
bool IsOn(int id);
// Tells the states that changed since the last call and which keys do nothing now, and draws these
// keys anew. Cheap: made to be called after every command and timer.
void RefreshKeyStates();

struct MenuRow {
  int id = 0;  // 0 is a separator
  bool enabled = true;
  bool checked = false;
  bool on = false;              // the state that picks the caption
  const char16_t* words = u"";  // instead of the caption, where items of one command differ
};
enum class MenuStyle : unsigned char {
  Items,     // menu words, and the chord behind a tab
  Captions,  // captions, and the chord behind eight blanks
};
// The text of a command's item in a menu: its words, and its chord unless the words are the key's
// name.
std::u16string MenuText(int id, bool on = false, MenuStyle style = MenuStyle::Items);
// Shows a popup of commands with its top left corner at main-window pixels. The chosen id, 0 for
// none, -1 when no menu could be made.
int ShowCommandMenu(std::span<const MenuRow> rows, int x, int y,
                    MenuStyle style = MenuStyle::Items);

}  // namespace morva
