// Forms: a panel of named fields as one table. A row says what a field is called, what it starts
// with, how it is read, which unit it follows, and which number of a block's record it is.
//
// A room owns its table; this room makes, places, hides, reads, converts and paints, so no room
// makes a control of its form itself. Keys and check boxes are named by their commands
// (app/commands.h), which know their words.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "forms/form_look.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/geometry.h"
#include "platform/window.h"
#include "text/strict_number.h"

namespace morva {

struct Sheet;  // forms/sheet.h

enum class RowKind : unsigned char {
  Head,     // words above a group of rows
  Note,     // help in small print
  Number,   // a decimal number
  Count,    // a whole number
  Words,    // text as typed
  Choice,   // a drop-down list
  Checks,   // check boxes side by side
  Keys,     // push buttons side by side
  List,     // one row at a time
  Multi,    // a list of which several rows can be chosen
  Log,      // several lines that are read only
  Preview,  // an editor that is read only
  View,     // a drawn view
};

// Which unit a number follows. A feed a minute follows the length unit as well.
enum class Follows : unsigned char {
  Nothing,
  Length,
  Thread
};  // Thread: threads an inch, or pitch

// What a text without a number counts as, in the form's unit.
struct Fallback {
  double inch = 0;
  double mm = 0;
  constexpr Fallback() = default;
  constexpr Fallback(double both) : inch(both), mm(both) {}  // NOLINT: the usual case
  constexpr Fallback(double inches, double millimetres) : inch(inches), mm(millimetres) {}
};

// How numbers are read: what a text begins with, by ParseDecimal and ParseInteger, or nothing but a
// number, by ReadStrict and its rule. A count by the strict rule is a whole number.
struct Reading {
  bool strict = false;
  StrictRule rule = {};
  static const Reading Lax;
  static const Reading Strict;
};
inline constexpr Reading Reading::Lax{};
inline constexpr Reading Reading::Strict{.strict = true};

// Pages are 0 to 31. Those that share a control must not share a row of it.
inline constexpr unsigned kEveryPage = ~0u;
constexpr unsigned PageBit(int page) { return 1u << page; }

struct FormRow {
  RowKind kind = RowKind::Number;
  int id = 0;                     // of the control; a Head or Note may go without
  const char16_t* label = u"";    // Head and Note: the words
  const char16_t* labelMm = u"";  // in millimetres, where the label names its unit
  const char16_t* name = u"";     // for assistive technology, where the label says too little
  unsigned namePages =
      kEveryPage;              // where it says too little; on other pages the label is the name
  const char16_t* help = u"";  // on the status line once the field gets the keyboard
  const char16_t* className = u"";  // of a View
  // Text of a field when it is made or started: in inch, converted where the form's unit is then
  // millimetres. A room that changes its unit without ConvertForms keeps the texts.
  const char16_t* start = u"";
  const char16_t* startMm = u"";  // in millimetres, where it is not `start` converted
  bool filled = false;            // its room writes what it says: it starts empty
  Fallback fallback = {};
  Follows follows = Follows::Nothing;
  int decimals = 3;             // after a conversion, 0 to 6
  int value = -1;               // place in FormValues::numbers; the first 16 go into a record
  int choice = -1;              // place in FormValues::choices; the first 3 are a, b, c of a record
  int words = -1;               // place in FormValues::words
  unsigned pages = kEveryPage;  // a bit a page
  int enter = 0;                // command of Enter, with Shift as without; 0 for none
  int limit = kFieldUnits - 1;  // units that can be typed; 0: as many as the control takes
  std::span<const char16_t* const> rows = {};  // of a Choice whose rows are fixed
  int chosen = 0;                              // of those, at the start
  // Of a Choice on every page: above 0 its rows are the form's pages, and rows behind the last of
  // so many pages share it. Who chooses in it gets the page with its start texts.
  int picks = 0;
  int keys[kMaxRowKeys] = {};      // Keys, Checks; of a field: the keys at its right end
  unsigned keyPages = kEveryPage;  // of the row's pages, those with the keys
  // Widths of these: parts of the row, 0 counting as 1; of a field's keys, and of all keys where
  // the look says keysAtEnd, pixels.
  short shares[kMaxRowKeys] = {};
  short height = 0;                 // pixels; 0: as the look says
  short above = 0;                  // more pixels above the row
  short width = 0;                  // of the field; 0: what is there
  short least = 0;                  // above 0: the row takes the height that others leave
  unsigned fillPages = kEveryPage;  // of the row's pages, those where `least` counts
  short percent = 0;                // of the height, where two rows share what is left
  bool optional = false;            // a number: no text counts as the fallback by any rule
  bool yields = false;              // gives up height before a filling row loses its least
  bool wide = false;                // a field across the form, without its label
  bool readOnly = false;            // Words that can be marked and copied, not changed
  bool half = false;   // of the width: it shares a line with a half row right behind it
  bool fixed = false;  // a View or Keys of a form on a sheet: it stands below what scrolls
};

// A length, or a feed a minute, on half a line, at a place of its own among the numbers and with
// the id that lies so far behind `firstId`. Start text and fallback are in inches.
constexpr FormRow LengthRow(int firstId, int value, const char16_t* label, const char16_t* help,
                            const char16_t* start, double fallback = 0, int decimals = 3) {
  FormRow row{.id = firstId + value, .label = label, .help = help, .start = start};
  row.fallback = fallback;
  row.follows = Follows::Length;
  row.decimals = decimals;
  row.value = value;
  row.half = true;
  return row;
}

struct Form {
  const FormLook* look = &kSheetLook;
  const Sheet* sheet = nullptr;  // scrolls; null: stands on `parent` itself
  int parent = platform::kMainWindow;
  std::span<const FormRow> rows = {};  // in the order of the screen, which Tab follows
  // The page that is up. Null: a list that picks it says so, else it is the one placed last.
  int (*page)() = nullptr;
  bool (*metric)() = nullptr;  // whose unit the fields are in; null: no unit
  // Switches that unit and converts what is in it, for a block of the other unit. Null: who opens
  // the block does that.
  void (*takeUnit)(bool metric) = nullptr;
  // The user changed what a field says, or chose in a list.
  void (*changed)(int id) = nullptr;
  // Pages on which the fixed rows stand at one height: below the most that scrolls on any of them.
  unsigned steadyPages = 0;
  int enter = 0;       // command of Enter in fields whose row names none; 0: none
  int escape = 0;      // command of Escape on any control; 0: none
  int firstLabel = 0;  // ids of labels from here on; 0: from the common range
};

struct FormValues {
  double numbers[kMaxFormNumbers] = {};
  // What was typed and is no number by the strict rule, by place; a lax form took a part of it, or
  // the fallback.
  Misread misread[kMaxFormNumbers] = {};
  int refused = -1;  // the row that ended a strict reading
  std::int32_t choices[kMaxFormChoices] = {};
  std::u16string words[kMaxFormWords];
  bool metric = false;
};

// Makes nothing yet. The program stops with words where the table is full, a control stands on
// another form already, or on two rows of one page. Forms on one sheet may share push buttons.
void RegisterForm(const Form& form);
// Every registered form, for tests that hold for all; null past the last.
const Form* FormAt(int index);
// What is shown and scrolled of one form as at its start; of all, and none registered.
void ResetForm(const Form& form);
void ResetForms();

// Makes the controls, hidden, unless they stand already.
void MakeForm(const Form& form);
// The page that is up, also while the form is hidden.
int PageOf(const Form& form);
// Places and shows the rows of `page` in `area`, in the parent's pixels, and hides the others. A
// form on a sheet takes the sheet's place, its scroll bar included. The y below the last row.
int PlaceForm(const Form& form, const platform::Rect& area, int page);
int PlaceForm(const Form& form, const platform::Rect& area);  // the page that is up
// Several pages at once, each in an area of its own.
struct FormPart {
  platform::Rect area;
  int page = 0;
};
void PlaceForm(const Form& form, std::span<const FormPart> parts);
void HideForm(const Form& form);
bool IsRowShown(const Form& form, int row);

// The row of a control on the page that is up, else one that is shown, else its first; -1: none.
int RowOfControl(const Form& form, int id);
// Ids of the form's controls in the order of the screen, each once; how many were written.
int FormOrder(const Form& form, int* ids, int capacity);

// The page's fields with their start texts, its lists with the row that they start with; a list
// that picks the page stays.
void StartForm(const Form& form, int page);
// False: the row `refused` holds no number by the strict rule; the rows behind it are not read.
// The lax rule never refuses.
bool ReadForm(const Form& form, int page, const Reading& reading, FormValues& values);
// The page's numbers that follow the unit, in the unit that is asked for; nothing where they are in
// it already.
void ConvertValues(const Form& form, int page, bool metric, FormValues& values);
// Selects the rows of the page's lists, one of which may say which page comes up. Lists of other
// pages stay: a page may belong to something else than the record that is shown.
void ShowChoices(const Form& form, int page, const FormValues& values);
// Writes the page's numbers, choices and words into its controls, in the unit that the form has:
// counts without a fraction, other numbers with `decimals`, 0 to 6, or as their rows say.
inline constexpr int kRowDecimals = -1;
void ShowForm(const Form& form, int page, const FormValues& values, int decimals = kRowDecimals);
// The number that a field begins with, else its row's fallback. At most 79 units are read.
double FieldNumber(int id);
double FieldFallback(int id);
// A number with the decimals of the field's row, as a conversion writes it.
std::u16string NumberText(int id, double value);
// As FieldNumber, with a fallback of the caller's.
double FieldNumber(int id, double fallback);
std::int32_t FieldCount(int id);
// By the strict rule. False: not a number, `value` stays.
bool ReadStrictField(int id, double& value);
// Every field that follows this unit, on every form: its text times the factor. Empty stays
// empty, so does a text with a comma as it is; what else is no number becomes 0. Labels that name
// the unit follow.
void ConvertForms(bool (*metric)(), double factor);

// Wells of the fields and lines above the heads that stand on this parent or paper.
void PaintForms(platform::Canvas& canvas, int parent);
// Enter, Escape, Page Up and Page Down on a control of a form. True: used.
bool FormKey(int id, const platform::KeyEvent& key);
// The user changed what a control says: the form's views are painted anew, its room is told.
void FormNotified(int id, int notification);
// The command of Enter in this field, 0 for none.
int FieldCommand(int id);
// Keeps the control that got the keyboard in sight and its frame up to date.
void FormFocusChanged(int id, bool gained);
// Scrolls a control of a sheet into sight. Nothing for one that is hidden.
void ShowFormControl(int id);

}  // namespace morva
