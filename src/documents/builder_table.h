// Builders: fields in, program text out, and back. A builder is a form and a few functions that
// change nothing: they read the form's values, and where a room has a model of its own, that.
//
// The record says what is particular to one builder. What is done with it stands in builder.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "app/app_state.h"
#include "app/commands.h"
#include "app/mode_table.h"
#include "forms/form.h"
#include "platform/message.h"

namespace morva {

struct CodeWriter;
struct FeatureSettings;
struct Picture;

// Why nothing is inserted. Without words no box comes.
struct Refusal {
  const char16_t* title = u"";  // empty: the builder's
  const char16_t* words = u"";
  platform::BoxIcon icon = platform::BoxIcon::Warning;
  int field = 0;  // gets the keyboard, 0: the keyboard stays
};
// Notes why. False, so that a check can end with it.
inline bool Refuse(Refusal& refusal, int field, const char16_t* words) {
  refusal.field = field;
  refusal.words = words;
  return false;
}

struct Builder {
  int kind = 0;                 // FeatureKind; 0: plain text behind the caret's line
  const char16_t* title = u"";  // of boxes that say why nothing is inserted
  const Form* form = nullptr;
  int readPage = -1;             // the form's page that is read and stored; -1: the one that is up
  int mode = -1;                 // the right panel that shows the form; -1: the room shows it
  const ModeRow* row = nullptr;  // what the window says of that mode, as app/panels.h says
  std::span<const ModeRow> moreModes = {};  // further modes that show the same panel
  bool helpBelow = false;                   // the mode's help text stands below the form
  bool showsPath = false;                   // the toolpath view stands beside or below the form
  Reading reading = Reading::Lax;           // of its numbers
  // For lax readings: a text of which a part is a number is refused with words, and so is a size
  // that is none. An empty field, and a count without a digit, count as their fallback, which the
  // log tells.
  bool wholeNumbers = false;
  void (*enter)() = nullptr;  // one of its modes was entered, and the form lies in its place
  void (*left)() = nullptr;   // the mode was left
  int insertKey = 0;          // a command; its other caption says that a block is under edit
  std::span<const Command> commands = {};  // words of its keys, where no table of the room has them
  bool asksWhere = false;                  // the user chooses program and operation number first
  const char16_t* logged = u"";            // in the output log after an insertion
  int refreshMs = 60;                      // until the text is looked at
  // Asked first of all. True: the key did something else, and nothing is inserted. Null: it
  // inserts.
  bool (*instead)(const FormValues& values) = nullptr;
  // The next three change nothing; they read the form's values and the room's model alone.
  // False: `refusal` says why. A number that the strict rule refuses stands in values.refused and
  // values.misread, and its field in refusal.field. Null: what could be read is taken.
  bool (*check)(const FormValues& values, Refusal& refusal) = nullptr;
  // The block's code; it begins with a line end of its own. Only what passed `check` comes here.
  void (*write)(const FormValues& values, CodeWriter& out) = nullptr;
  // What the code cuts, drawn from the same places, while the fields are typed: `check` was not
  // asked, so every number may come, and a count may be huge or negative. Null: no picture.
  void (*draw)(const FormValues& values, Picture& picture) = nullptr;
  // The left button went down on this part of the picture; kNoPart: on none. The picture is drawn
  // anew behind it. Null: it takes no click.
  void (*pressed)(int part) = nullptr;
  // The view that shows the picture where it does not stand on the form, 0: it stands there.
  int pictureView = 0;
  // Whether code and record are in millimetres, and what switches that for a block of the other
  // unit, where the form has a unit of its own: its numbers are converted on their way. Null: the
  // form's unit.
  bool (*metric)() = nullptr;
  void (*takeUnit)(bool metric) = nullptr;
  // The mode to bring up for a record with these choices. Null: `mode`.
  int (*modeOf)(const FormValues& values) = nullptr;
  // Units that the code may have; larger code is refused with words. Null: kMaxBuilderText.
  std::size_t (*room)(const FormValues& values) = nullptr;
  // What the record holds beside the form's numbers and choices: items, numbers without a field.
  // The record to store has the form's values already and may get others in their place. False: it
  // cannot be stored, or is no record of this builder. Null: the form is all.
  bool (*storeItems)(FeatureSettings& record) = nullptr;
  bool (*loadItems)(const FeatureSettings& record) = nullptr;
  // The block of the program that holds already what would be inserted, 0 for none: the user is
  // asked whether to update it. Null: nobody asks.
  std::int32_t (*standsIn)() = nullptr;
  // After an insertion, or an update in place. Null: nothing more.
  void (*inserted)(const FormValues& values, bool updated) = nullptr;
  // The link to a block under edit changed. Null: only the key's caption follows.
  void (*linked)() = nullptr;
};

// Called by JoinBuilder. A full table stops the program with words.
void AddBuilder(const Builder& builder);
// The n-th builder, null past the last.
const Builder* BuilderAt(int index);
void ResetBuilders();
// Captions of the builders' keys while a block of this kind is under edit, 0: none.
void ShowBuilderKeys(int kind);

}  // namespace morva
