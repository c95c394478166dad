// Builders: fields in, program text out, and back. A builder is a form and a few pure functions.
//
// One record says what is particular to a builder. Everything else is done here, once: the panel,
// the command of its key, insertion or update with its boxes, the record of the block and its
// reopening, the key's caption, the live picture, and what follows a change of the program.
#pragma once

#include <cstddef>

#include "documents/feature_settings.h"
#include "forms/form.h"
#include "forms/picture.h"
#include "platform/canvas.h"
#include "platform/geometry.h"
#include "platform/message.h"
#include "text/code_writer.h"

namespace morva {

// Why nothing is inserted. Without words no box comes.
struct Refusal {
  const char16_t* title = u"";
  const char16_t* words = u"";
  platform::BoxIcon icon = platform::BoxIcon::Warning;
  int field = 0;  // gets the keyboard, 0: the keyboard stays
};

struct Builder {
  int kind = 0;  // FeatureKind; 0: plain text behind the caret's line
  const Form* form = nullptr;
  int (*page)() = nullptr;         // the form's page that is up; null: page 0
  int mode = -1;                   // the right panel that shows the form; -1: the room shows it
  bool helpBelow = false;          // the mode's help text stands below the form
  Reading reading = Reading::Lax;  // of its numbers
  int insertKey = 0;               // a command; its other caption says that a block is under edit
  const char16_t* logged = u"";    // in the output log after an insertion
  int refreshMs = 60;              // until the text is looked at
  // Pure. False: `refusal` says why. `unread` is the row that holds no number by the strict rule,
  // -1 for none. Null: everything is taken.
  bool (*check)(const FormValues& values, int unread, Refusal& refusal) = nullptr;
  // Pure. The block's code; it begins with a line end of its own.
  void (*write)(const FormValues& values, CodeWriter& out) = nullptr;
  // Pure. What the code cuts, drawn from the same places. Null: no picture.
  void (*draw)(const FormValues& values, Picture& picture) = nullptr;
  // Units that the code may have. Null: kMaxBuilderText.
  std::size_t (*room)(const FormValues& values) = nullptr;
  // What the record holds beside the form's numbers and choices. False: it cannot be stored, or
  // is no record of this builder. Null: the form is all.
  bool (*storeItems)(FeatureSettings& record) = nullptr;
  bool (*loadItems)(const FeatureSettings& record) = nullptr;
  // After an insertion, or an update in place. Null: nothing more.
  void (*inserted)(const FormValues& values, bool updated) = nullptr;
  // The link to a block under edit changed. Null: only the key's caption follows.
  void (*linked)() = nullptr;
};

// The calls that the tables of other rooms keep for one builder.
struct BuilderCalls {
  bool (*store)(FeatureSettings& record) = nullptr;
  bool (*open)(const FeatureSettings& record) = nullptr;
  void (*make)() = nullptr;
  void (*place)(const platform::Rect& area) = nullptr;
  void (*hide)() = nullptr;
  void (*paint)(platform::Canvas& canvas) = nullptr;
};
void JoinBuilder(const Builder& builder, const BuilderCalls& calls);

// The command of the builder's key. False: nothing changed, and the user was told why.
bool InsertFromBuilder(const Builder& builder);
// The form's numbers and choices and the builder's items as a record. False: they cannot be stored.
bool StoreBuilder(const Builder& builder, FeatureSettings& record);
// The record into the form, which comes up. False: it is no record of this builder.
bool OpenBuilder(const Builder& builder, const FeatureSettings& record);
void PlaceBuilder(const Builder& builder, const platform::Rect& area);
// What the fields say now, fitted into the view.
void PaintBuilder(const Builder& builder, platform::Canvas& canvas);
// The n-th builder, for tests that hold for all; null past the last.
const Builder* BuilderAt(int index);
void ResetBuilders();

// Registers the builder, its form and its panel, once at start-up.
template <const Builder& builder>
void RegisterBuilder() {
  BuilderCalls calls;
  calls.store = [](FeatureSettings& record) { return StoreBuilder(builder, record); };
  calls.open = [](const FeatureSettings& record) { return OpenBuilder(builder, record); };
  calls.make = [] { MakeForm(*builder.form); };
  calls.place = [](const platform::Rect& area) { PlaceBuilder(builder, area); };
  calls.hide = [] { HideForm(*builder.form); };
  calls.paint = [](platform::Canvas& canvas) { PaintBuilder(builder, canvas); };
  JoinBuilder(builder, calls);
}

}  // namespace morva
